// SPDX-License-Identifier: MIT
#include "backends/qt/window_icon.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace windowtest {
namespace {

QColor MiddleOf(const QIcon& icon, int size) {
    const QImage image = icon.pixmap(size, size).toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

TEST(WindowIcon, IsBuiltInWhereTheThemeHasNone) {
    const QIcon icon = backends::qt::WindowIcon();
    QList<QSize> sizes = icon.availableSizes();
    EXPECT_EQ(sizes, (QList<QSize>{{48, 48}, {128, 128}, {256, 256}}));
    for (const int size : {16, 48, 256})
        EXPECT_EQ(MiddleOf(icon, size).alpha(), 255) << size;
}

TEST(WindowIcon, IsThatOfTheThemeWhereItIsInstalled) {
    const QTemporaryDir theme;
    ASSERT_TRUE(QDir(theme.path()).mkpath(QStringLiteral("hicolor/48x48/apps")));
    QFile index(theme.filePath(QStringLiteral("hicolor/index.theme")));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=hicolor\nDirectories=48x48/apps\n[48x48/apps]\nSize=48\n");
    index.close();
    QImage green(48, 48, QImage::Format_RGB32);
    green.fill(Qt::green);
    ASSERT_TRUE(green.save(theme.filePath(QStringLiteral("hicolor/48x48/apps/quorin.png"))));

    const QStringList pathsBefore = QIcon::themeSearchPaths();
    const QString themeBefore = QIcon::themeName();
    QIcon::setThemeSearchPaths({theme.path()});
    QIcon::setThemeName(QStringLiteral("hicolor"));
    EXPECT_EQ(MiddleOf(backends::qt::WindowIcon(), 48).name(), QColor(Qt::green).name());
    QIcon::setThemeSearchPaths(pathsBefore);
    QIcon::setThemeName(themeBefore);
}

} // namespace
} // namespace windowtest
