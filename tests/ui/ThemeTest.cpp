#include "ui/Theme.h"

#include "platform/desktop/QtDesktop.h"
#include "tests/support/Contrast.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace kavendra {

TEST(Colors, textIsReadableOnEverythingThatItStandsOn) {
    for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
        applyAppearance(appearance);
        const QPalette palette = QGuiApplication::palette();
        EXPECT_EQ(isDark(palette), appearance == Appearance::dark);
        struct Pair {
            const char* name;
            QColor text, background;
        };
        const QColor secondary = secondaryTextColor(palette);
        const QColor bar = searchBarColor(palette);
        for (const auto& [name, text, background] : {
                 Pair{"secondary on window", secondary, palette.color(QPalette::Window)},
                 Pair{"secondary on base", secondary, palette.color(QPalette::Base)},
                 Pair{"secondary on alternate base", secondary, palette.color(QPalette::AlternateBase)},
                 Pair{"secondary on button", secondary, palette.color(QPalette::Button)},
                 Pair{"secondary on search bar", secondary, bar},
                 Pair{"text on search bar", palette.color(QPalette::WindowText), bar},
                 Pair{"placeholder on search bar", palette.color(QPalette::PlaceholderText), bar},
             })
            EXPECT_GE(contrast(text, background), smallestTextContrast)
                << name << ", appearance " << static_cast<int>(appearance);
    }
    applyAppearance(Appearance::system);
}

} // namespace kavendra
