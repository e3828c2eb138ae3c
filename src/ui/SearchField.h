#pragma once

#include "ui/ClickCounter.h"

#include <QLineEdit>

#include <functional>
#include <string>
#include <string_view>

namespace kavendra {

/// The field that the query is typed into. It keeps the focus while one works: the keys that mean the table
/// go to the callbacks, all others edit. While an input method composes, every key belongs to the
/// composition.
///
/// With selectAllOnFocus the whole text is selected, ready to be typed over, when the field gains the focus
/// and when its window is activated again; a click of the left button that brings the focus does so once the
/// button is released. Without it nothing is selected by itself, however the focus arrives.
class SearchField final : public QLineEdit {
public:
    explicit SearchField(QWidget* parent = nullptr);

    bool selectAllOnFocus = false;

    std::function<void(std::string text)> onTextChange;
    std::function<void(std::string_view line)> onDebugLog; ///< may be empty
    std::function<void()> onSubmit;
    std::function<void()> onMoveUp;
    std::function<void()> onMoveDown;
    std::function<void()> onMoveToBeginning;
    std::function<void()> onMoveToEnd;

    /// Shows a text that did not come from the field; a text that it shows already leaves the caret alone.
    void showText(const std::string& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const std::function<void()>* callbackFor(const QKeyEvent& event) const;
    void gainFocus(Qt::FocusReason reason);
    void notePress(const QMouseEvent& press);
    void scheduleSelectAll(int deferrals);
    void selectWholeText();
    void applyColors();

    template <typename... Pieces>
    void debugLog(const Pieces&... pieces) const;

    QAction* icon = nullptr;
    bool isComposing = false;
    bool isFirstResponder = false; ///< it has the focus within its window, active or not
    bool shouldSelectAllAfterMouseDown = false;
    int selectAllRequest = 0; ///< what is scheduled counts only while this stays the same
    ClickCounter clicks;
    int clickCount = 0; ///< of the last press of the left button
};

} // namespace kavendra
