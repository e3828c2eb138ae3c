#include "ui/ElidedLabel.h"

#include "ui/DisplayText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace kavendra {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::showText(const QString& text) {
    if (text == this->text())
        return;
    setText(text);
    setAccessibleName(text);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), static_cast<int>(alignment()), palette(), isEnabled(), line,
                          foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), isCut() ? "<qt>" + text().toHtmlEscaped() + "</qt>" : QString(),
                       this);
    return true;
}

bool ElidedLabel::isCut() const {
    return fontMetrics().horizontalAdvance(text()) > width();
}

} // namespace kavendra
