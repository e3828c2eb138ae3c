#include "ui/MessageDialog.h"

#include "ui/AccessibleRole.h"
#include "ui/DisplayText.h"
#include "ui/Translation.h"

#include <QGridLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextEdit>

#include <cmath>

namespace kavendra {

namespace {

constexpr int iconSide = 48;
constexpr int margin = 16;
constexpr int spacing = 16;

constexpr int maximumLineLength = 60;  ///< in average characters
constexpr int framedTextMargin = 8;    ///< around a text that scrolls, in points
constexpr int screenHeightDivisor = 3; ///< a message is at most this part of the screen's height

/// Bounds the time for the layout. The log holds a longer message whole.
constexpr qsizetype maximumLength = 100'000;

} // namespace

/// A read-only text that can be scrolled, selected and copied. It is as large as the text up to a maximum,
/// beyond which it scrolls, and breaks long words between any two characters. Control and bidirectional
/// characters are shown as visible marks; the original is copied.
class MessageText final : public QTextEdit {
public:
    MessageText() {
        setReadOnly(true);
        setUndoRedoEnabled(false);
        setAcceptRichText(false);
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setTabChangesFocus(true);
    }

    void showMessage(const QString& message, Qt::LayoutDirection textDirection) {
        const QString shown = withoutMiddle(message, maximumLength);
        if (shown == m_message)
            return;
        m_message = shown;
        setWordWrapMode(wrapMode(m_message));
        QTextOption option = document()->defaultTextOption();
        option.setTextDirection(textDirection);
        document()->setDefaultTextOption(option);
        setPlainText(withVisibleMarks(m_message, LineFeeds::keep));
        fitToText();
    }

    QSize sizeHint() const override { return m_size; }
    QSize minimumSizeHint() const override { return m_size; }

protected:
    QMimeData* createMimeDataFromSelection() const override {
        auto* data = new QMimeData;
        const QTextCursor selection = textCursor();
        data->setText(originalOfVisible(m_message, selection.selectionStart(), selection.selectionEnd()));
        return data;
    }

private:
    // A text that fits looks like a label; one that scrolls has a frame.
    void fitToText() {
        const int maximumWidth = fontMetrics().averageCharWidth() * maximumLineLength;
        const int maximumHeight = screen()->availableGeometry().height() / screenHeightDivisor;
        document()->setDocumentMargin(0);
        document()->setTextWidth(maximumWidth);
        const bool scrolls = document()->size().height() > maximumHeight;
        setFrameShape(scrolls ? StyledPanel : NoFrame);
        viewport()->setBackgroundRole(scrolls ? QPalette::Base : QPalette::Window);
        setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        if (scrolls) {
            document()->setDocumentMargin(framedTextMargin);
            const int besideText =
                2 * (framedTextMargin + frameWidth()) + verticalScrollBar()->sizeHint().width();
            m_size = QSize(maximumWidth + besideText, maximumHeight);
        } else {
            m_size =
                QSizeF(std::ceil(document()->idealWidth()), std::ceil(document()->size().height())).toSize();
        }
        updateGeometry();
    }

    QString m_message;
    QSize m_size;
};

MessageDialog::MessageDialog(QWidget* parent, const QIcon& icon, std::initializer_list<Button> buttons)
    : QDialog(parent), m_text(new MessageText) {
    setWindowTitle(QStringLiteral("kavendra"));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setAccessibleRole(*this, QAccessible::AlertMessage);
    m_text->setAccessibleName(translated("Message"));
    auto* buttonBox = new QDialogButtonBox;
    for (const auto& [kind, title] : buttons) {
        QPushButton* button = buttonBox->addButton(kind);
        button->setText(title);
        button->setIcon(QIcon());
        if (!m_defaultButton)
            m_defaultButton = button;
    }
    m_defaultButton->setDefault(true);
    auto* iconLabel = new QLabel;
    iconLabel->setPixmap(icon.pixmap(iconSide));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(spacing);
    grid->addWidget(iconLabel, 0, 0, Qt::AlignTop);
    grid->addWidget(m_text, 0, 1, Qt::AlignLeading | Qt::AlignVCenter);
    grid->addWidget(buttonBox, 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    connect(buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void MessageDialog::showMessage(const QString& message, Qt::LayoutDirection textDirection) {
    m_text->showMessage(message, textDirection);
    setAccessibleDescription(m_text->toPlainText()); // read by a screen reader when the dialog opens
    if (isVisible())
        return;
    open();
    m_defaultButton->setFocus();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace kavendra
