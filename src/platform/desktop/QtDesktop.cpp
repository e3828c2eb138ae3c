#include "platform/desktop/QtDesktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPalette>

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

QPalette paletteOf(Appearance appearance) {
    switch (appearance) {
    case Appearance::light:
        return paletteOf(lightColors);
    case Appearance::dark:
        return paletteOf(darkColors);
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

} // namespace

void applyAppearance(Appearance appearance) {
    if (hasApplication())
        QGuiApplication::setPalette(paletteOf(appearance));
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
