#include "platform/desktop/QtDesktop.h"

#include "tests/support/Contrast.h"

#include <QGuiApplication>
#include <QPalette>

#include <gtest/gtest.h>

namespace kavendra {

TEST(QtDesktop, textHasEnoughContrastInAllPalettes) {
    int argumentCount = 0;
    const QGuiApplication application(argumentCount, nullptr);
    const QPalette before = QGuiApplication::palette();
    using enum QPalette::ColorRole;
    std::vector<std::pair<QPalette::ColorRole, QPalette::ColorRole>> pairs{
        {Text, AlternateBase},      {WindowText, Button},         {ButtonText, Button},
        {ToolTipText, ToolTipBase}, {HighlightedText, Highlight},
    };
    for (const QPalette::ColorRole text : {WindowText, Text, PlaceholderText, Link, LinkVisited})
        for (const QPalette::ColorRole background : {Window, Base})
            pairs.emplace_back(text, background);
    for (const auto& [appearance, highContrast] : {std::pair{Appearance::light, false},
                                                   {Appearance::dark, false},
                                                   {Appearance::light, true},
                                                   {Appearance::dark, true}}) {
        const double smallest = highContrast ? smallestHighContrast : smallestTextContrast;
        applyAppearance(appearance, highContrast);
        const QPalette palette = QGuiApplication::palette();
        EXPECT_EQ(luminance(palette.color(QPalette::Base)) < 0.5, appearance == Appearance::dark);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            for (const auto& [text, background] : pairs)
                EXPECT_GE(contrast(palette.color(group, text), palette.color(group, background)), smallest)
                    << "appearance " << static_cast<int>(appearance) << ", group " << group << ", "
                    << palette.color(group, text).name().toStdString() << " on "
                    << palette.color(group, background).name().toStdString();
    }
    applyAppearance(Appearance::system);
    EXPECT_EQ(QGuiApplication::palette(), before);
}

TEST(QtDesktop, desktopPaletteIsKeptWhereItIsAsPreferred) {
    using enum Appearance;
    const QPalette lightPalette(Qt::black, Qt::lightGray, {}, {}, {}, Qt::black, {}, Qt::white, Qt::white);
    const QPalette darkPalette(Qt::white, Qt::darkGray, {}, {}, {}, Qt::white, {}, Qt::black, Qt::black);
    struct Case {
        Appearance preferred;
        bool highContrast;
        bool isDark;
        bool isDesktopsOwn;
        Appearance chosen;
    };
    for (const auto& [preferred, highContrast, isDark, isDesktopsOwn, chosen] :
         {Case{system, false, true, true, system}, Case{dark, false, true, true, system},
          Case{light, false, true, true, light}, Case{light, false, false, true, system},
          Case{dark, false, false, true, dark}, Case{light, false, false, false, light},
          Case{system, true, true, true, dark}, Case{system, true, false, false, light},
          Case{dark, true, true, true, dark}})
        EXPECT_EQ(
            chosenAppearance(preferred, highContrast, isDark ? darkPalette : lightPalette, isDesktopsOwn),
            chosen)
            << static_cast<int>(preferred) << highContrast << isDark << isDesktopsOwn;
}

} // namespace kavendra
