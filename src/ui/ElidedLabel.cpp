#include "ui/ElidedLabel.h"

#include "ui/DisplayText.h"
#include "ui/ToolTip.h"

#include <QHelpEvent>
#include <QPainter>

namespace kavendra {

namespace {

constexpr qsizetype maximumLength = 2000; ///< wider than any window; bounds the time for the layout

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::showText(const std::string& text) {
    if (text == m_wholeText)
        return;
    m_wholeText = text;
    setText(withVisibleMarks(withoutMiddle(QString::fromUtf8(text), maximumLength)));
    setAccessibleName(this->text());
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    drawLine(painter, rect(), alignment(), fontMetrics().elidedText(text(), Qt::ElideMiddle, width()),
             Qt::LeftToRight);
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    showToolTip(*this, help->globalPos(), rect(),
                isElided() ? withVisibleMarks(QString::fromUtf8(m_wholeText)) : QString(), Qt::LeftToRight);
    return true;
}

bool ElidedLabel::isElided() const {
    return fontMetrics().horizontalAdvance(text()) > width();
}

} // namespace kavendra
