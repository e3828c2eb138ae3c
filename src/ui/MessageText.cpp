#include "ui/MessageText.h"

#include "ui/DisplayText.h"

#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>

#include <cmath>

namespace kavendra {

namespace {

constexpr int lineLength = 60;        ///< of the longest line, in average characters
constexpr int framedTextMargin = 8;   ///< around a text that scrolls, in points
constexpr int partOfScreenHeight = 3; ///< a message is at most a third as high as the screen

// Nobody reads more, and laying it out takes time in proportion. The log has all of a longer message.
constexpr qsizetype maximumLength = 100'000;

} // namespace

MessageText::MessageText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
}

void MessageText::showMessage(const QString& message, Qt::LayoutDirection textDirection) {
    m_message = withoutMiddle(message, maximumLength);
    setWordWrapMode(wrapMode(m_message));
    QTextOption option = document()->defaultTextOption();
    option.setTextDirection(textDirection);
    document()->setDefaultTextOption(option);
    setPlainText(withVisibleMarks(m_message, LineFeeds::keep));
    fitToText();
}

// A text that fits stands on the dialog's ground like a label's; one that scrolls stands in a frame.
void MessageText::fitToText() {
    const int widest = fontMetrics().averageCharWidth() * lineLength;
    const int highest = screen()->availableGeometry().height() / partOfScreenHeight;
    document()->setDocumentMargin(0);
    document()->setTextWidth(widest);
    const bool scrolls = document()->size().height() > highest;
    setFrameShape(scrolls ? StyledPanel : NoFrame);
    viewport()->setBackgroundRole(scrolls ? QPalette::Base : QPalette::Window);
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    if (scrolls) {
        document()->setDocumentMargin(framedTextMargin);
        const int besideText =
            2 * (framedTextMargin + frameWidth()) + verticalScrollBar()->sizeHint().width();
        m_size = QSize(widest + besideText, highest);
    } else {
        m_size = QSizeF(std::ceil(document()->idealWidth()), std::ceil(document()->size().height())).toSize();
    }
    updateGeometry();
}

QMimeData* MessageText::createMimeDataFromSelection() const {
    auto* data = new QMimeData;
    const QTextCursor selection = textCursor();
    data->setText(originalOfVisible(m_message, selection.selectionStart(), selection.selectionEnd()));
    return data;
}

} // namespace kavendra
