#pragma once

#include "ui/MessageText.h"

#include <QDialog>
#include <QDialogButtonBox>

#include <optional>

namespace kavendra {

/// A message above buttons. It never blocks: the window's state says whether it is up, and how it was
/// answered is reported back there.
class MessageDialog : public QDialog {
public:
    explicit MessageDialog(QWidget* parent);

    /// What is shown now or was shown last.
    const QString& message() const { return m_text->message(); }
    /// Returns the button of that kind, nullptr when it was not offered.
    QPushButton* button(QDialogButtonBox::StandardButton kind) const { return m_buttons->button(kind); }

protected:
    /// Shows a message, in the place of the one that is up; without one, closes.
    void showMessage(const std::optional<QString>& message, Qt::LayoutDirection textDirection);

    /// Adds a button with that title. The first one is the default.
    void offer(QDialogButtonBox::StandardButton kind, const QString& title);

private:
    MessageText* m_text;
    QDialogButtonBox* m_buttons;
    QPushButton* m_defaultButton = nullptr;
};

} // namespace kavendra
