#pragma once

#include <QLabel>

namespace kavendra {

/// One line of plain text that is cut in its middle where it does not fit (a message begins with what
/// failed and ends with why), and never widens the window.
/// The whole text is its accessible name, and its tooltip while it is cut.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Shows a text; what it looks like on one line is up to the caller.
    void showText(const QString& text);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isCut() const;
};

} // namespace kavendra
