#pragma once

#include <QLabel>

#include <string>

namespace kavendra {

/// One line of plain text that runs left to right, is cut in its middle where it does not fit (a message
/// begins with what failed and ends with why), and never widens the window. The line is its accessible name;
/// the whole text is its tooltip while it is cut.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Shows a UTF-8 text on one line, with visible marks.
    void showText(const std::string& text);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isCut() const;

    std::string m_wholeText;
};

} // namespace kavendra
