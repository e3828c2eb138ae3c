#include "ui/TableFrame.h"

#include "ui/Theme.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace kavendra {

TableFrame::TableFrame(QWidget* table) : m_layout(new QGridLayout(this)) {
    m_layout->setContentsMargins(1, 1, 1, 1);
    m_layout->addWidget(table, 0, 0);
}

void TableFrame::showText(const QString& text) {
    if (!m_text && text.isEmpty())
        return;
    if (!m_text) {
        m_text = new QLabel;
        m_text->setObjectName("tableText");
        m_text->setAttribute(Qt::WA_TransparentForMouseEvents);
        m_layout->addWidget(m_text, 0, 0, Qt::AlignCenter);
        applyColors();
    }
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
}

void TableFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(separatorColor(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void TableFrame::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_text)
        applyColors();
}

void TableFrame::applyColors() {
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    m_text->setPalette(quiet);
}

} // namespace kavendra
