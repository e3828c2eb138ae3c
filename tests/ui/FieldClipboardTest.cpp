#include "ui/FieldClipboard.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace kavendra {

namespace {

class FieldClipboardTest : public testing::Test {
protected:
    FieldClipboardTest() {
        new FieldClipboard(*field, [this](Clipboard clipboard, FieldClipboard::Receiver receiver) {
            EXPECT_EQ(clipboard, Clipboard::copied);
            received = std::move(receiver);
        });
        field->show();
    }

    std::unique_ptr<QLineEdit> field = std::make_unique<QLineEdit>();
    FieldClipboard::Receiver received;
};

} // namespace

TEST_F(FieldClipboardTest, textThatComesLateReplacesTheSelection) {
    field->setText("old");
    field->selectAll();
    QTest::keyClick(field.get(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "old");
    received("");
    EXPECT_EQ(field->text(), "old") << "an empty clipboard";
    received("new");
    EXPECT_EQ(field->text(), "new");
    field.reset();
    received("for a field that is gone");
}

TEST_F(FieldClipboardTest, menuOffersWhatIsPossible) {
    field->insert("text");
    field->selectAll();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(field.get(), &event);
    QString titles;
    for (const QAction* action : QApplication::activePopupWidget()->actions())
        titles += action->isEnabled() ? action->text() + " " : "";
    EXPECT_EQ(titles, "&Undo  Cu&t &Copy &Paste Delete  Select All ");
    QApplication::activePopupWidget()->close();
}

} // namespace kavendra
