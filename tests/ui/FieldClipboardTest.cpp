#include "ui/FieldClipboard.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
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

    /// Returns the titles of the enabled entries of the context menu; chooses the entry with a title.
    std::string menu(const QString& chosen = {}) const {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(field.get(), &event);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        std::string titles;
        for (QAction* action : menu->actions()) {
            const QString title = action->text().remove('&');
            if (action->isEnabled() && !action->isSeparator())
                titles += title.toStdString() + " ";
            if (title == chosen)
                action->trigger();
        }
        menu->close();
        return titles;
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
    EXPECT_EQ(menu(), "Paste ");
    field->insert("text");
    EXPECT_EQ(menu("Select All"), "Undo Paste Select All ");
    EXPECT_EQ(menu("Delete"), "Undo Cut Copy Paste Delete Select All ");
    EXPECT_EQ(menu("Paste"), "Undo Paste ");
    received("pasted");
    EXPECT_EQ(field->text(), "pasted");
}

} // namespace kavendra
