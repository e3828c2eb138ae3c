#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QEvent;
class QWidget;

namespace kavendra {

/// One press of the left button in a view of rows, from the button's press to its release.
///
/// What is typed meanwhile is held back and delivered once the press has ended, whatever widget has the
/// keyboard; Escape makes the press launch nothing. A press also ends, launching nothing, when its release
/// cannot be expected any more: the window is deactivated or blocked by a dialog, or the pointer moves with
/// the button up.
class RowPress final : public QObject {
public:
    /// `viewport`: the widget that receives the mouse events; must outlive this.
    explicit RowPress(QWidget& viewport);

    bool isActive() const { return m_isActive; }

    /// Begins a press on a row, nothing where there is no row. A press that is still active ends.
    void begin(std::optional<int> row);
    /// Call it with the row under the pointer whenever the pointer moves: away from its row a press launches
    /// nothing any more, also when the pointer comes back.
    void moveTo(std::optional<int> row);
    /// Ends the press with the button released over `row`. Returns the row to launch, if any. Then an Enter
    /// typed during the press is dropped: it would launch the same row again.
    std::optional<int> release(std::optional<int> row);
    /// Makes the press launch nothing; it goes on until its release.
    void cancel() { m_row.reset(); }
    /// Ends the press without its release.
    void abandon();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct HeldEvent {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };

    void end(bool isLaunch);
    void deliverHeldEvents();

    QWidget& m_viewport;
    bool m_isActive = false;
    std::optional<int> m_row; ///< which a release launches
    std::vector<HeldEvent> m_heldEvents;
};

} // namespace kavendra
