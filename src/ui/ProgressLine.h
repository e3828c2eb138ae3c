#pragma once

#include <QProgressBar>
#include <QTimer>

namespace kavendra {

/// A thin line that shows that something is in progress, without saying how much of it is done. It appears
/// when that takes longer than 0.3 s, moves for ten seconds and then stands still until the end.
class ProgressLine final : public QProgressBar {
public:
    /// In points.
    static constexpr int height = 3;

    explicit ProgressLine(QWidget* parent);

    /// Shows that `text` is in progress, for a screen reader too; an empty text ends it. Without motion, the
    /// whole line is in the accent colour.
    void showProgress(const QString& text, bool hasMotion);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();
    void advance();

    QTimer m_delay;
    QTimer m_motion;
    int m_step = 0;
    bool m_hasMotion = true;
};

} // namespace kavendra
