#include "ui/Colors.h"

namespace kavendra {

namespace {

/// `base` with `fraction` of `over` mixed in, both in parts of one.
QColor blended(const QColor& base, const QColor& over, float fraction) {
    const auto mix = [fraction](float from, float to) { return from + (to - from) * fraction; };
    return QColor::fromRgbF(mix(base.redF(), over.redF()), mix(base.greenF(), over.greenF()),
                            mix(base.blueF(), over.blueF()));
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
    const QColor ground = searchBarColor(palette);
    menu.setColor(QPalette::Base, ground);
    menu.setColor(QPalette::Light, ground);
    // Styles draw the outline in a darker shade of this.
    menu.setColor(QPalette::Window, separatorColor(palette).lighter(180));
    return menu;
}

QColor secondaryTextColor(const QPalette& palette) {
    return blended(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.35F);
}

} // namespace kavendra
