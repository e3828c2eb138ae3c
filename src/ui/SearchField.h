#pragma once

#include <QLineEdit>
#include <QPoint>
#include <QTimer>

#include <functional>
#include <string>
#include <string_view>

namespace kavendra {

/// The field for the query. It keeps the focus while the user works: keys that act on the table call the
/// callbacks, Escape clears the text, all others edit it. During an input method composition all keys go to
/// the input method.
///
/// With selectAllOnFocus, all text is selected when the field gains the focus and when its window is
/// activated again. If a click of the left button brings the focus, this happens after the release, and not
/// for a double click, which selects a word. Without selectAllOnFocus, gaining the focus never selects.
class SearchField final : public QLineEdit {
public:
    explicit SearchField(QWidget* parent = nullptr);

    bool selectAllOnFocus = false;

    std::function<void(std::string text)> onTextChange;    ///< the user has edited the text
    std::function<void(std::string_view line)> onDebugLog; ///< may be empty
    std::function<void()> onSubmit;
    std::function<void()> onMoveUp;
    std::function<void()> onMoveDown;
    std::function<void()> onMoveToBeginning;
    std::function<void()> onMoveToEnd;

    /// Replaces the text without calling onTextChange; no-op, caret included, if the text is the same.
    void showText(const std::string& text);
    /// Takes the focus and selects the whole text, unless an input method is composing.
    void selectWholeText();
    /// Takes the focus and handles a key press, pressed elsewhere, at the end of the text.
    void continueWith(QKeyEvent& event);

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
    /// Called when another window becomes active: QLineEdit keeps every typed character until its text is
    /// set.
    void dropUndoHistory();
    void handlePress(const QMouseEvent& press);
    void countClick(const QMouseEvent& press);
    void applyColors();

    template <typename... Pieces>
    void debugLog(const Pieces&... pieces) const;

    QAction* m_icon = nullptr;
    QAction* m_clearAction = nullptr; ///< visible only with text
    bool m_isComposing = false;

    // How select-all works: m_selectAllTimer fires once the event that requested it has been handled; any
    // press but a right one stops it, because that press places the caret. A left press that brings the focus
    // sets m_selectsAllOnRelease instead, and the release starts the timer.
    QTimer m_selectAllTimer;
    bool m_selectsAllOnRelease = false;
    /// Whether the field is its window's focus widget. It stays so while the window is inactive or a menu is
    /// open, so that returning from there does not count as gaining the focus.
    bool m_isFocusWidget = false;

    // The last press of the left button. Qt itself counts no further than a double click.
    int m_clickCount = 0;
    quint64 m_lastPressTime = 0; ///< timestamp of the window system, in milliseconds
    QPoint m_lastPressPosition;  ///< on the screen
};

} // namespace kavendra
