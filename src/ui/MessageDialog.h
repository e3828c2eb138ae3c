#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>

#include <initializer_list>

namespace kavendra {

class MessageText;

/// A message above buttons, modal to its window. It does not block: the caller shows and hides it, and
/// QDialog::finished reports QDialog::Accepted for "OK" or "Yes", QDialog::Rejected for any other way of
/// closing it.
class MessageDialog final : public QDialog {
public:
    struct Button {
        QDialogButtonBox::StandardButton kind;
        QString title;
    };

    /// The first button is the default one.
    MessageDialog(QWidget* parent, const QIcon& icon, std::initializer_list<Button> buttons);

    /// Opens the dialog with a plain text, or replaces the text that it shows; no-op if it shows that text.
    /// `textDirection` is the direction of the text, which may differ from the window's.
    void showMessage(const QString& message, Qt::LayoutDirection textDirection);

private:
    MessageText* m_text;
    QPushButton* m_defaultButton = nullptr;
};

} // namespace kavendra
