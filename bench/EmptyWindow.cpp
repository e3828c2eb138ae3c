#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

/// The floor of tools/measure-start and tools/measure-typing: a window of kavendra's size with a label and
/// painted lines of text, the first one on the accent colour. A key replaces the label's text and repaints
/// the lines.
class EmptyWindow final : public QWidget {
public:
    EmptyWindow() : m_label(QStringLiteral("Search Title, Command, Params, Keywords"), this) {
        setWindowTitle(QStringLiteral("kavendra"));
        resize(960, 520);
        m_label.setGeometry(46, 12, 898, 28); // as the text of kavendra's search field
    }

protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int top = 90;
        constexpr int bottom = 480;
        const int height = fontMetrics().height() + 10;
        QPainter painter(this);
        painter.fillRect(QRect(0, top, width(), height), QColor(0x1f, 0x63, 0xd6));
        for (int y = top; y + height <= bottom; y += height)
            painter.drawText(QRect(16, y, width() - 32, height), Qt::AlignVCenter,
                             QStringLiteral("Browser %1 of the team    https://example.org/items/%1    "
                                            "--profile %1    browser notes")
                                 .arg(y));
    }

    void keyPressEvent(QKeyEvent* event) override {
        m_label.setText(m_text += event->text());
        update();
    }

private:
    QLabel m_label;
    QString m_text;
};

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    EmptyWindow window;
    window.show();
    return QApplication::exec();
}
