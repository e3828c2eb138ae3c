#include "platform/desktop/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace kavendra {

TEST(QtClipboard, holdsPlainText) {
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    putOnClipboard("nothing happens without an application");

    int argumentCount = 0;
    const QGuiApplication application(argumentCount, nullptr);
    putOnClipboard("before");
    putOnClipboard("a\tb\n <b>日本</b> \xFF");
    const QMimeData* held = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(held->text(), QString::fromUtf8("a\tb\n <b>日本</b> \uFFFD"));
    EXPECT_FALSE(held->hasHtml());
}

} // namespace kavendra
