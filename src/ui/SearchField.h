#pragma once

#include <QLineEdit>

#include <functional>
#include <string>
#include <string_view>

namespace kavendra {

/// The field that the query is typed into. It keeps the focus while one works: the keys that mean the table
/// go to the callbacks, all others edit. While an input method composes, every key belongs to the
/// composition.
class SearchField final : public QLineEdit {
public:
    explicit SearchField(QWidget* parent = nullptr);

    std::function<void(std::string text)> onTextChange;
    std::function<void(std::string_view line)> onDebugLog;
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
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const std::function<void()>* callbackFor(const QKeyEvent& event) const;
    void tintIcon();

    QAction* icon = nullptr;
    bool isComposing = false;
};

} // namespace kavendra
