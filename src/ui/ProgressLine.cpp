#include "ui/ProgressLine.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace kavendra {

namespace {

constexpr int delayMilliseconds = 300;
constexpr int stepMilliseconds = 40;
constexpr int stepsInOneWay = 40; ///< of the segment, from one end to the other
constexpr int maximumSteps = 250; ///< ten seconds: a drive that never answers shall not cost processor time

} // namespace

ProgressLine::ProgressLine(QWidget* parent) : QProgressBar(parent) {
    setRange(0, 0); // no known end
    setTextVisible(false);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_delay.setSingleShot(true);
    m_delay.setInterval(delayMilliseconds);
    m_delay.callOnTimeout(this, &ProgressLine::appear);
    m_motion.setInterval(stepMilliseconds);
    m_motion.callOnTimeout(this, &ProgressLine::advance);
}

void ProgressLine::showProgress(const QString& text, bool hasMotion) {
    m_hasMotion = hasMotion;
    if (text.isEmpty()) {
        m_delay.stop();
        m_motion.stop();
        hide();
        return;
    }
    if (text != accessibleName())
        setAccessibleName(text);
    if (!isVisible() && !m_delay.isActive())
        m_delay.start();
}

void ProgressLine::appear() {
    m_step = 0;
    if (m_hasMotion)
        m_motion.start();
    raise();
    show();
}

void ProgressLine::advance() {
    if (++m_step == maximumSteps)
        m_motion.stop();
    update();
}

// A third of the line, in the accent colour, moves to and fro and is slower near the ends.
void ProgressLine::paintEvent(QPaintEvent*) {
    const double way = (1 - std::cos(std::numbers::pi * m_step / stepsInOneWay)) / 2;
    const double segment = m_hasMotion ? width() / 3.0 : width();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(way * (width() - segment), 0, segment, QWidget::height()),
                     palette().color(QPalette::Highlight));
}

} // namespace kavendra
