#include "ui/MessageDialog.h"

#include "ui/AccessibleRole.h"
#include "ui/DisplayText.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace kavendra {

namespace {

constexpr int iconSide = 48;
constexpr int margin = 16;
constexpr int spacing = 16;

} // namespace

MessageDialog::MessageDialog(QWidget* parent)
    : QDialog(parent), m_text(new MessageText), m_buttons(new QDialogButtonBox) {
    setWindowTitle(QStringLiteral("kavendra"));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setAccessibleRole(*this, QAccessible::AlertMessage);
    m_text->setAccessibleName(translated("Message"));
    auto* icon = new QLabel;
    icon->setPixmap(applicationIcon().pixmap(iconSide));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(spacing);
    grid->addWidget(icon, 0, 0, Qt::AlignTop);
    grid->addWidget(m_text, 0, 1, Qt::AlignLeading | Qt::AlignVCenter);
    grid->addWidget(m_buttons, 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void MessageDialog::offer(QDialogButtonBox::StandardButton kind, const QString& title) {
    QPushButton* button = m_buttons->addButton(kind);
    button->setText(title);
    button->setIcon(QIcon()); // a word is enough
    if (m_defaultButton)
        return;
    m_defaultButton = button;
    button->setDefault(true);
}

void MessageDialog::showMessage(const std::optional<QString>& message, Qt::LayoutDirection textDirection) {
    if (!message) {
        if (isVisible())
            hide();
        return;
    }
    if (*message != m_text->message()) {
        m_text->showMessage(*message, textDirection);
        // What a screen reader says when the dialog comes up.
        setAccessibleDescription(m_text->toPlainText());
    }
    if (isVisible())
        return;
    open();
    m_defaultButton->setFocus();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace kavendra
