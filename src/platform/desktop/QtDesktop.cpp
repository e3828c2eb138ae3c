#include "platform/desktop/QtDesktop.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QPalette>
#include <QStyle>

namespace kavendra {

namespace {

/// The colors of an appearance, as 0xRRGGBB. All text, also disabled text, has a contrast of at least 4.5 to
/// 1 against its background (WCAG 2.1, level AA).
struct Colors {
    QRgb window, base, alternateBase, button, tooltip;
    QRgb text, placeholder, disabledText;
    QRgb accent, accentText, disabledHighlight;
    QRgb link, visitedLink;
    QRgb light, midlight, mid, dark, shadow;
};

constexpr Colors lightColors{
    .window = 0xf3f3f4,
    .base = 0xffffff,
    .alternateBase = 0xf7f7f8,
    .button = 0xf9f9fa,
    .tooltip = 0xffffff,
    .text = 0x1d1d1f,
    .placeholder = 0x66666b,
    .disabledText = 0x6a6a6f,
    .accent = 0x1f63d6,
    .accentText = 0xffffff,
    .disabledHighlight = 0xececee,
    .link = 0x1a57be,
    .visitedLink = 0x6b3fa0,
    .light = 0xffffff,
    .midlight = 0xe6e6e8,
    .mid = 0xb9b9be,
    .dark = 0x98989d,
    .shadow = 0x6e6e73,
};

constexpr Colors darkColors{
    .window = 0x2a2a2d,
    .base = 0x1e1e20,
    .alternateBase = 0x242427,
    .button = 0x36363a,
    .tooltip = 0x36363a,
    .text = 0xececee,
    .placeholder = 0xa8a8ae,
    .disabledText = 0xa0a0a6,
    .accent = 0x2f6fdd,
    .accentText = 0xffffff,
    .disabledHighlight = 0x333337,
    .link = 0x86b4ff,
    .visitedLink = 0xc9a4f5,
    .light = 0x55555a,
    .midlight = 0x46464b,
    .mid = 0x303034,
    .dark = 0x18181a,
    .shadow = 0x0c0c0d,
};

// With high contrast, text has a contrast of at least 7 to 1 (level AAA).

constexpr Colors lightContrastColors{
    .window = 0xffffff,
    .base = 0xffffff,
    .alternateBase = 0xffffff,
    .button = 0xffffff,
    .tooltip = 0xffffff,
    .text = 0x000000,
    .placeholder = 0x404040,
    .disabledText = 0x484848,
    .accent = 0x0a3d91,
    .accentText = 0xffffff,
    .disabledHighlight = 0xf0f0f0,
    .link = 0x0a3d91,
    .visitedLink = 0x551a8b,
    .light = 0xffffff,
    .midlight = 0xd0d0d0,
    .mid = 0x606060,
    .dark = 0x303030,
    .shadow = 0x000000,
};

constexpr Colors darkContrastColors{
    .window = 0x000000,
    .base = 0x000000,
    .alternateBase = 0x000000,
    .button = 0x000000,
    .tooltip = 0x000000,
    .text = 0xffffff,
    .placeholder = 0xc8c8c8,
    .disabledText = 0xb8b8b8,
    .accent = 0x8ab8ff,
    .accentText = 0x000000,
    .disabledHighlight = 0x202020,
    .link = 0x9cc4ff,
    .visitedLink = 0xd9b8ff,
    .light = 0xd0d0d0,
    .midlight = 0xa0a0a0,
    .mid = 0x808080,
    .dark = 0x606060,
    .shadow = 0x404040,
};

QPalette paletteOf(const Colors& colors) {
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, QRgb color) {
        palette.setColor(QPalette::All, role, QColor::fromRgb(color));
    };
    set(QPalette::Window, colors.window);
    set(QPalette::Base, colors.base);
    set(QPalette::AlternateBase, colors.alternateBase);
    set(QPalette::Button, colors.button);
    set(QPalette::ToolTipBase, colors.tooltip);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        set(role, colors.text);
    set(QPalette::PlaceholderText, colors.placeholder);
    set(QPalette::BrightText, colors.accentText);
    set(QPalette::Highlight, colors.accent);
    set(QPalette::HighlightedText, colors.accentText);
    set(QPalette::Link, colors.link);
    set(QPalette::LinkVisited, colors.visitedLink);
    set(QPalette::Light, colors.light);
    set(QPalette::Midlight, colors.midlight);
    set(QPalette::Mid, colors.mid);
    set(QPalette::Dark, colors.dark);
    set(QPalette::Shadow, colors.shadow);

    const auto setDisabled = [&palette](QPalette::ColorRole role, QRgb color) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(color));
    };
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::HighlightedText, QPalette::PlaceholderText})
        setDisabled(role, colors.disabledText);
    setDisabled(QPalette::Base, colors.window);
    setDisabled(QPalette::Highlight, colors.disabledHighlight);
    return palette;
}

QPalette paletteOf(Appearance appearance, bool highContrast) {
    switch (appearance) {
    case Appearance::light:
        return paletteOf(highContrast ? lightContrastColors : lightColors);
    case Appearance::dark:
        return paletteOf(highContrast ? darkContrastColors : darkColors);
    case Appearance::system:
        break;
    }
    return {}; // an empty palette: all colors come from the desktop and follow its changes
}

QClipboard::Mode modeOf(Clipboard clipboard) {
    return clipboard == Clipboard::copied ? QClipboard::Clipboard : QClipboard::Selection;
}

bool hasApplication() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Whether the current palette comes from the desktop and is not the default of Qt's style.
bool hasDesktopPalette() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) &&
           QGuiApplication::palette() != QApplication::style()->standardPalette();
}

} // namespace

void applyAppearance(Appearance appearance, bool highContrast) {
    if (hasApplication())
        QGuiApplication::setPalette(paletteOf(appearance, highContrast));
}

void applyPreference(Appearance preferred, bool highContrast) {
    if (!hasApplication())
        return;
    applyAppearance(Appearance::system); // to see the desktop's own
    const Appearance chosen =
        chosenAppearance(preferred, highContrast, QGuiApplication::palette(), hasDesktopPalette());
    if (chosen != Appearance::system)
        applyAppearance(chosen, highContrast);
}

Appearance chosenAppearance(Appearance preferred, bool highContrast, const QPalette& desktopPalette,
                            bool isDesktopsOwn) {
    const bool isDark = desktopPalette.color(QPalette::Window).lightnessF() <
                        desktopPalette.color(QPalette::WindowText).lightnessF();
    const Appearance existing = isDark ? Appearance::dark : Appearance::light;
    if (highContrast)
        return preferred == Appearance::system ? existing : preferred;
    return isDesktopsOwn && preferred == existing ? Appearance::system : preferred;
}

void putOnClipboard(const std::string& text) {
    if (hasApplication())
        QMetaObject::invokeMethod(QCoreApplication::instance(), [content = QString::fromStdString(text)] {
            QGuiApplication::clipboard()->setText(content);
        });
}

std::string clipboardText(Clipboard clipboard) {
    return hasApplication() ? QGuiApplication::clipboard()->text(modeOf(clipboard)).toStdString()
                            : std::string();
}

bool isForeignX11Clipboard(Clipboard clipboard) {
    if (!hasApplication() || QGuiApplication::platformName() != QStringLiteral("xcb"))
        return false;
    const QClipboard& own = *QGuiApplication::clipboard();
    return !(clipboard == Clipboard::copied ? own.ownsClipboard() : own.ownsSelection());
}

} // namespace kavendra
