#pragma once

#include <QLabel>

#include <string>

namespace kavendra {

/// One line of plain text, laid out left to right. A text that does not fit is elided in the middle, because
/// a message begins with what failed and ends with the reason, and has a tooltip with the whole text. The
/// label never widens the window.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Shows a UTF-8 text on one line with visible marks, which is also the accessible name.
    void showText(const std::string& text);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isElided() const;

    std::string m_wholeText;
};

} // namespace kavendra
