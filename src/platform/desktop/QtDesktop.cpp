#include "platform/desktop/QtDesktop.h"

#include "platform/desktop/Palettes.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QPalette>
#include <QStyle>

namespace kavendra {

namespace {

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
