#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QEvent;
class QWidget;

namespace kavendra {

/// Tracks one press of the left button in a view of rows, from the button's press to its release.
///
/// Keyboard input during the press is held back and delivered after it, to whatever widget it was meant for;
/// Escape cancels the press. A press also ends, without a launch, when its release may be lost: the window
/// is deactivated or blocked by a dialog, or the pointer moves with the button up.
///
/// How it works: from begin() until the input has been delivered, an event filter on the application takes
/// every key press and input method event out of Qt's delivery and stores a copy. The end of the press queues
/// the delivery, so that it comes after the launch.
class RowPress final : public QObject {
public:
    /// `viewport` is the widget that receives the mouse events. It must outlive this.
    explicit RowPress(QWidget& viewport);

    bool isActive() const { return m_isActive; }

    /// Begins a press on a row, or on none. Ends the active press, if any.
    void begin(std::optional<int> row);
    /// Tells the row under the pointer after each move. A press that leaves its row launches nothing, even if
    /// the pointer returns.
    void moveTo(std::optional<int> row);
    /// Ends the press with the button released over `row`. Returns the row to launch, if any; then Enter
    /// typed during the press is dropped, because it would launch that row again.
    std::optional<int> release(std::optional<int> row);
    /// Makes the press launch nothing. It stays active until its release.
    void cancel() { m_row.reset(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct HeldEvent {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };

    void end();
    void deliverHeldEvents();

    QWidget& m_viewport;
    bool m_isActive = false;
    std::optional<int> m_row; ///< launched by a release
    std::vector<HeldEvent> m_heldEvents;
};

} // namespace kavendra
