#include "ui/Icon.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace kavendra {

namespace {

/// Draws an SVG at whatever size is asked for.
class SvgIconEngine final : public QIconEngine {
public:
    explicit SvgIconEngine(QByteArray svg) : svg(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }

    QIconEngine* clone() const override { return new SvgIconEngine(*this); }

private:
    QByteArray svg;
};

/// Returns the SVG of that name, empty when there is none.
QByteArray iconSource(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QIcon applicationIcon() {
    return QIcon(new SvgIconEngine(iconSource("kavendra")));
}

QIcon tintedIcon(const QString& name, const QColor& color) {
    const QByteArray css = color.name(QColor::HexRgb).toLatin1();
    return QIcon(new SvgIconEngine(iconSource(name).replace("currentColor", css)));
}

} // namespace kavendra
