#include "platform/desktop/Palettes.h"

#include <QPalette>

namespace kavendra {

namespace {

/// The colours of a role as 0xRRGGBB: light, dark, and both with high contrast.
struct RoleColors {
    QPalette::ColorRole role;
    QRgb colors[4];
};

// All text, also disabled text, has a contrast of at least 4.5 to 1 against its background (WCAG 2.1, level
// AA), with high contrast 7 to 1 (level AAA).
constexpr RoleColors roleColors[] = {
    {QPalette::Window, {0xf3f3f4, 0x2a2a2d, 0xffffff, 0x000000}},
    {QPalette::WindowText, {0x1d1d1f, 0xececee, 0x000000, 0xffffff}},
    {QPalette::Base, {0xffffff, 0x1e1e20, 0xffffff, 0x000000}},
    {QPalette::AlternateBase, {0xf7f7f8, 0x242427, 0xffffff, 0x000000}},
    {QPalette::Text, {0x1d1d1f, 0xececee, 0x000000, 0xffffff}},
    {QPalette::PlaceholderText, {0x66666b, 0xa8a8ae, 0x404040, 0xc8c8c8}},
    {QPalette::Button, {0xf9f9fa, 0x36363a, 0xffffff, 0x000000}},
    {QPalette::ButtonText, {0x1d1d1f, 0xececee, 0x000000, 0xffffff}},
    {QPalette::BrightText, {0xffffff, 0xffffff, 0xffffff, 0x000000}},
    {QPalette::ToolTipBase, {0xffffff, 0x36363a, 0xffffff, 0x000000}},
    {QPalette::ToolTipText, {0x1d1d1f, 0xececee, 0x000000, 0xffffff}},
    {QPalette::Highlight, {0x1f63d6, 0x2f6fdd, 0x0a3d91, 0x8ab8ff}},
    {QPalette::HighlightedText, {0xffffff, 0xffffff, 0xffffff, 0x000000}},
    {QPalette::Link, {0x1a57be, 0x86b4ff, 0x0a3d91, 0x9cc4ff}},
    {QPalette::LinkVisited, {0x6b3fa0, 0xc9a4f5, 0x551a8b, 0xd9b8ff}},
    {QPalette::Light, {0xffffff, 0x55555a, 0xffffff, 0xd0d0d0}},
    {QPalette::Midlight, {0xe6e6e8, 0x46464b, 0xd0d0d0, 0xa0a0a0}},
    {QPalette::Mid, {0xb9b9be, 0x303034, 0x606060, 0x808080}},
    {QPalette::Dark, {0x98989d, 0x18181a, 0x303030, 0x606060}},
    {QPalette::Shadow, {0x6e6e73, 0x0c0c0d, 0x000000, 0x404040}},
};

/// The roles whose colours differ in disabled controls.
constexpr RoleColors disabledColors[] = {
    {QPalette::WindowText, {0x6a6a6f, 0xa0a0a6, 0x484848, 0xb8b8b8}},
    {QPalette::Text, {0x6a6a6f, 0xa0a0a6, 0x484848, 0xb8b8b8}},
    {QPalette::ButtonText, {0x6a6a6f, 0xa0a0a6, 0x484848, 0xb8b8b8}},
    {QPalette::HighlightedText, {0x6a6a6f, 0xa0a0a6, 0x484848, 0xb8b8b8}},
    {QPalette::PlaceholderText, {0x6a6a6f, 0xa0a0a6, 0x484848, 0xb8b8b8}},
    {QPalette::Base, {0xf3f3f4, 0x2a2a2d, 0xffffff, 0x000000}},
    {QPalette::Highlight, {0xececee, 0x333337, 0xf0f0f0, 0x202020}},
};

} // namespace

QPalette paletteOf(Appearance appearance, bool highContrast) {
    QPalette palette;
    if (appearance == Appearance::system)
        return palette;
    const int column = (appearance == Appearance::dark ? 1 : 0) + (highContrast ? 2 : 0);
    for (const auto& [role, colors] : roleColors)
        palette.setColor(QPalette::All, role, QColor::fromRgb(colors[column]));
    for (const auto& [role, colors] : disabledColors)
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colors[column]));
    return palette;
}

} // namespace kavendra
