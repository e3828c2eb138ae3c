#pragma once

#include <QTextEdit>

namespace kavendra {

/// A message to read, scroll and select from, with the mouse or the keyboard. It is as large as its text up
/// to a bound, beyond which it scrolls, and breaks long words between any two characters. Control and
/// bidirectional characters show as marks; what is copied is the original.
class MessageText final : public QTextEdit {
public:
    explicit MessageText(QWidget* parent = nullptr);

    void showMessage(const QString& message, Qt::LayoutDirection textDirection);
    const QString& message() const { return m_message; }

    QSize sizeHint() const override { return m_size; }
    QSize minimumSizeHint() const override { return m_size; }

protected:
    QMimeData* createMimeDataFromSelection() const override;

private:
    void fitToText();

    QString m_message;
    QSize m_size;
};

} // namespace kavendra
