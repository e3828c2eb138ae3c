#include "ui/Theme.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace kavendra {

namespace {

/// Returns `base` mixed with `over`, whose share is `fraction` (0 to 1).
QColor blended(const QColor& base, const QColor& over, float fraction) {
    const auto mix = [fraction](float from, float to) { return from + (to - from) * fraction; };
    return QColor::fromRgbF(mix(base.redF(), over.redF()), mix(base.greenF(), over.greenF()),
                            mix(base.blueF(), over.blueF()));
}

/// Renders an SVG at the requested size.
class SvgIconEngine final : public QIconEngine {
public:
    explicit SvgIconEngine(QByteArray svg) : m_svg(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        QSvgRenderer(m_svg).render(painter, rect);
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
    QByteArray m_svg;
};

/// Returns the SVG of that name, empty if there is none.
QByteArray iconSource(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

QColor searchBarColor(const QPalette& palette) {
    const QColor control = palette.color(QPalette::Base);
    return isDark(palette) ? blended(control, Qt::white, 0.12F) : blended(control, Qt::black, 0.08F);
}

QColor searchFieldColor(const QPalette& palette) {
    return isDark(palette) ? blended(searchBarColor(palette), palette.color(QPalette::Window), 0.55F)
                           : palette.color(QPalette::Base);
}

QColor separatorColor(const QPalette& palette) {
    return blended(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.15F);
}

QPalette menuPalette(const QPalette& palette) {
    if (!isDark(palette))
        return palette;
    QPalette menu = palette;
    menu.setColor(QPalette::Base, searchBarColor(palette));
    menu.setColor(QPalette::Light, searchBarColor(palette)); // edge of disabled text
    // Styles draw the outline in a darker shade of this colour.
    menu.setColor(QPalette::Window, separatorColor(palette).lighter(180));
    return menu;
}

QColor secondaryTextColor(const QPalette& palette) {
    return blended(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.35F);
}

QIcon applicationIcon() {
    return QIcon(new SvgIconEngine(iconSource("kavendra")));
}

QIcon warningIcon() {
    return QIcon(new SvgIconEngine(iconSource("warning")));
}

QIcon tintedIcon(const QString& name, const QColor& color) {
    const QByteArray css = color.name(QColor::HexRgb).toLatin1();
    return QIcon(new SvgIconEngine(iconSource(name).replace("currentColor", css)));
}

} // namespace kavendra
