#include "ui/Theme.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace kavendra {

namespace {

/// Returns `base` mixed with `over`, whose share is `fraction` (0 to 1).
QColor blended(const QColor& base, const QColor& over, float fraction) {
    const auto mix = [fraction](float from, float to) { return from + (to - from) * fraction; };
    return QColor::fromRgbF(mix(base.redF(), over.redF()), mix(base.greenF(), over.greenF()),
                            mix(base.blueF(), over.blueF()));
}

/// Returns the relative luminance of a colour, as WCAG 2.1 defines it.
double luminance(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Returns the contrast ratio of two colours, 1 to 21.
double contrast(const QColor& a, const QColor& b) {
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

/// Whether the palette is black and white, so that its derived colours need a high contrast too.
bool hasHighContrast(const QPalette& palette) {
    constexpr double highContrast = 20;
    return contrast(palette.color(QPalette::Window), palette.color(QPalette::WindowText)) > highContrast;
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
    return blended(palette.color(QPalette::Window), palette.color(QPalette::WindowText),
                   hasHighContrast(palette) ? 0.6F : 0.15F);
}

QColor selectedRowColor(const QPalette& palette, QPalette::ColorGroup group, bool hasKeyboard) {
    constexpr double smallestContrast = 4.5;
    const QColor text = palette.color(group, QPalette::HighlightedText);
    // Every colour has a contrast of at least 4.58 to 1 with one of the two, so the loop ends.
    const QColor awayFromText = contrast(text, Qt::black) > contrast(text, Qt::white) ? Qt::black : Qt::white;
    QColor color = palette.color(group, QPalette::Highlight);
    if (hasKeyboard)
        color = blended(color, awayFromText, 0.25F);
    while (contrast(color, text) < smallestContrast)
        color = blended(color, awayFromText, 0.05F);
    return color;
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
    return blended(palette.color(QPalette::WindowText), palette.color(QPalette::Window),
                   hasHighContrast(palette) ? 0.15F : 0.35F);
}

QFont smallerFont(int steps) {
    QFont font;
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - steps));
    return font;
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
