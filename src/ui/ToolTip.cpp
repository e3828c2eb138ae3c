#include "ui/ToolTip.h"

#include "ui/AccessibleRole.h"
#include "ui/DisplayText.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

#include <cmath>

namespace kavendra {

namespace {

constexpr int initialLineLength = 80;          ///< in average characters
constexpr int padding = 4;                     ///< on every side of the text, in points
constexpr QPoint offsetFromPointer(2, 20);     ///< clears an arrow pointer of normal size
constexpr qsizetype maximumLength = 16 * 1024; ///< more than fits a screen; bounds the time for the layout

/// Returns how long a text is shown, in milliseconds: the same as QToolTip.
int displayTime(qsizetype length) {
    return static_cast<int>(10000 + 40 * std::max<qsizetype>(0, length - 100));
}

class ToolTip final : public QWidget {
public:
    ToolTip(QWidget& widget, const QRect& area, const QString& text, Qt::LayoutDirection textDirection)
        : QWidget(&widget, Qt::ToolTip | Qt::WindowTransparentForInput), m_owner(widget), m_area(area),
          m_text(text) {
        setObjectName("toolTip");
        setAccessibleRole(*this, QAccessible::ToolTip);
        setAccessibleName(text);
        setAttribute(Qt::WA_DeleteOnClose);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setFont(QToolTip::font());
        setPalette(QToolTip::palette());
        setBackgroundRole(QPalette::ToolTipBase);
        setForegroundRole(QPalette::ToolTipText);
        layOut(textDirection);
        QCoreApplication::instance()->installEventFilter(this);
        QTimer::singleShot(displayTime(text.size()), this, &QWidget::close);
    }

    bool shows(const QRect& area, const QString& text) const { return area == m_area && text == m_text; }

    void showNear(const QPoint& globalPosition) {
        const QRect screen = m_owner.screen()->availableGeometry();
        QPoint corner = globalPosition + offsetFromPointer;
        if (corner.y() + height() > screen.bottom() + 1)
            corner.setY(globalPosition.y() - offsetFromPointer.x() - height());
        corner.setX(
            std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() + 1 - width())));
        corner.setY(std::max(corner.y(), screen.top()));
        move(corner);
        show();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QStyleOptionFrame frame;
        frame.initFrom(this);
        style()->drawPrimitive(QStyle::PE_PanelTipLabel, &frame, &painter, this);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text, palette().color(QPalette::ToolTipText));
        painter.translate(padding, padding);
        m_document.documentLayout()->draw(&painter, context);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseMove:
            if (watched == &m_owner &&
                !m_area.contains(static_cast<QMouseEvent*>(event)->position().toPoint()))
                close();
            break;
        case QEvent::Leave:
            if (watched == &m_owner)
                close();
            break;
        case QEvent::KeyPress:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::WindowActivate:
        case QEvent::WindowDeactivate:
        case QEvent::FocusIn:
        case QEvent::FocusOut:
        case QEvent::ApplicationPaletteChange:
            close();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void layOut(Qt::LayoutDirection textDirection) {
        QTextOption option(Qt::AlignLeading);
        option.setTextDirection(textDirection);
        option.setWrapMode(wrapMode(m_text));
        m_document.setDefaultTextOption(option);
        m_document.setDefaultFont(font());
        m_document.setDocumentMargin(0);
        m_document.setUndoRedoEnabled(false);
        m_document.setPlainText(m_text.left(maximumLength));
        const QSize room = m_owner.screen()->availableGeometry().size() - QSize(2 * padding, 2 * padding);
        int width = std::min(fontMetrics().averageCharWidth() * initialLineLength, room.width());
        m_document.setTextWidth(width);
        // Widen long texts until they take at most a third of the screen's height, if they can.
        while (m_document.size().height() > room.height() / 3 && width < room.width()) {
            width = std::min(width * 3 / 2, room.width());
            m_document.setTextWidth(width);
        }
        if (m_document.size().height() > room.height())
            cutTo(room);
        m_document.setTextWidth(std::min(m_document.textWidth(), std::ceil(m_document.idealWidth())));
        resize(m_document.size().toSize() + QSize(2 * padding, 2 * padding));
    }

    /// Replaces the end of the text, from the last line that fits `room`, by an ellipsis.
    void cutTo(const QSize& room) {
        const int lastLine = room.height() - fontMetrics().height();
        QTextCursor cursor(&m_document);
        cursor.setPosition(m_document.documentLayout()->hitTest(QPointF(0, lastLine), Qt::FuzzyHit));
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.insertText(QStringLiteral("…"));
    }

    QWidget& m_owner;
    QRect m_area;
    QString m_text;
    QTextDocument m_document;
};

} // namespace

void showToolTip(QWidget& widget, const QPoint& globalPosition, const QRect& area, const QString& text,
                 Qt::LayoutDirection textDirection) {
    for (QWidget* child : widget.findChildren<QWidget*>("toolTip", Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && static_cast<ToolTip*>(child)->shows(area, text))
            return;
        child->close();
    }
    if (!text.isEmpty())
        (new ToolTip(widget, area, text, textDirection))->showNear(globalPosition);
}

} // namespace kavendra
