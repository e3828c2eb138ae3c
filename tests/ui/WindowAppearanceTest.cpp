#include "platform/desktop/QtDesktop.h"
#include "tests/support/Contrast.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QMenu>
#include <QTextEdit>
#include <QToolTip>

namespace kavendra {

namespace {

using WindowAppearanceTest = MainWindowFixture;

/// Whether most pixels that differ from the corner are in the right half of the area that they span.
bool isHeavierOnTheRight(const QImage& image) {
    std::vector<int> positions;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (image.pixel(x, y) != image.pixel(0, 0))
                positions.push_back(x);
    if (positions.empty())
        return false;
    const int middle = (positions.front() + positions.back()) / 2;
    const auto right = std::ranges::count_if(positions, [middle](int x) { return x > middle; });
    return right * 2 > std::ssize(positions);
}

} // namespace

// In a right-to-left paragraph the W's would be on the left.
TEST_F(WindowAppearanceTest, pathsRunLeftToRightInEveryLayoutDirection) {
    const std::string path = "/\xD7\x90....../WWWW"; // the first letter is Hebrew
    writeItems("x," + path + ",,\n");
    content.reloadData();
    content.select(std::nullopt);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        content.reportFailure(path);
        QCoreApplication::processEvents();
        const QRect inside = cell(0, 1).adjusted(2, 0, -2, 0);
        EXPECT_TRUE(isHeavierOnTheRight(table.viewport()->grab(inside).toImage())) << "table";
        EXPECT_TRUE(isHeavierOnTheRight(statusMessage.grab().toImage())) << "status line";
        EXPECT_TRUE(isHeavierOnTheRight(message().viewport()->grab().toImage())) << "dialog";
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(WindowAppearanceTest, openWidgetsFollowTheAppearance) {
    content.reportFailure("a failure");
    content.requestStartupChange();
    QMenu menu(&window);
    menu.addAction("an entry");
    menu.popup({});
    QToolTip::showText({}, "a tip", &window);
    ASSERT_TRUE(QToolTip::isVisible());
    for (const Appearance appearance : {Appearance::dark, Appearance::light, Appearance::dark}) {
        applyAppearance(appearance);
        QCoreApplication::processEvents();
        int count = 0;
        for (const QWidget* widget : QApplication::allWidgets()) {
            if (!widget->isVisible())
                continue;
            ++count;
            const QColor text = widget->palette().color(widget->foregroundRole());
            const QColor background = widget->palette().color(widget->backgroundRole());
            const std::string name =
                std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString();
            EXPECT_EQ(luminance(background) < 0.3, appearance == Appearance::dark) << name;
            EXPECT_GE(contrast(text, background), smallestTextContrast) << name;
        }
        EXPECT_GT(count, 15);
        const QImage image = window.grab().toImage();
        for (const QRect& outlined : {bar.geometry(), frame.geometry()})
            for (const QPoint& corner : {outlined.topLeft(), outlined.bottomRight()})
                EXPECT_EQ(image.pixelColor(corner), QColor(separatorColor(window.palette()).rgb()));
        const QColor barColor = searchBarColor(window.palette());
        const QPoint besideField(field.x() / 2, field.geometry().center().y());
        EXPECT_EQ(image.pixelColor(besideField), QColor(barColor.rgb()));
        EXPECT_GE(contrast(field.palette().color(QPalette::PlaceholderText), barColor), smallestTextContrast);
    }
    applyAppearance(Appearance::system);
}

TEST_F(WindowAppearanceTest, derivedColorsHaveEnoughContrast) {
    for (const Appearance appearance : {Appearance::system, Appearance::light, Appearance::dark}) {
        const bool highContrast = appearance != Appearance::system;
        const double smallest = highContrast ? smallestHighContrast : smallestTextContrast;
        applyAppearance(appearance, highContrast);
        const QPalette palette = QApplication::palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            const QColor text = palette.color(group, QPalette::HighlightedText);
            const QColor quiet = selectedRowColor(palette, group, false);
            const QColor deep = selectedRowColor(palette, group, true);
            EXPECT_GE(contrast(text, quiet), smallest) << group;
            EXPECT_GT(contrast(text, deep), contrast(text, quiet) * 1.1) << group;
        }
        for (const QColor& background : {searchBarColor(palette), palette.color(QPalette::Base)})
            EXPECT_GE(contrast(secondaryTextColor(palette), background), smallest);
    }
    applyAppearance(Appearance::system);
    for (const QRgb text : {0xffff0000U, 0xff00ff00U, 0xff4040ffU, 0xff7f7f7fU}) {
        QPalette palette;
        palette.setColor(QPalette::HighlightedText, QColor::fromRgb(text));
        palette.setColor(QPalette::Highlight, QColor::fromRgb(text));
        const QColor row = selectedRowColor(palette, QPalette::Active, false);
        EXPECT_GE(contrast(QColor::fromRgb(text), row), smallestTextContrast) << std::hex << text;
    }
}

TEST_F(WindowAppearanceTest, layoutFollowsTheFont) {
    const QFont before = QApplication::font();
    const int rowHeight = table.rowHeight(0);
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(large);
    QCoreApplication::processEvents();
    EXPECT_GT(table.rowHeight(0), rowHeight * 3 / 2);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return statusMessage.height() >= QFontMetrics(statusMessage.font()).height(); }));
    EXPECT_GT(statusMessage.font().pointSizeF(), before.pointSizeF());
    EXPECT_GE(field.height(), QFontMetrics(large).height());
    QApplication::setFont(before);
    QCoreApplication::processEvents();
    EXPECT_EQ(table.rowHeight(0), rowHeight);
}

} // namespace kavendra
