#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Relative luminance and contrast ratio as WCAG 2.1 defines them.
namespace kavendra {

inline constexpr double smallestTextContrast = 4.5; ///< of level AA
inline constexpr double smallestHighContrast = 7;   ///< of level AAA

inline double luminance(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

inline double contrast(const QColor& a, const QColor& b) {
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

} // namespace kavendra
