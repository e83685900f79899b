#include "CorvidKit/Components/IconItem.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

namespace corvid {
namespace {

QColor middleOf(IconItem& item) {
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    item.setSize({20, 20});
    QPainter painter(&image);
    item.paint(&painter);
    return image.pixelColor(10, 10);
}

/// A theme that contains only the icons that a test adds.
class Icons : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName(QStringLiteral("bare"));
        QIcon::setFallbackSearchPaths({folder.path()});
    }

    void TearDown() override {
        QIcon::setThemeSearchPaths(searchPaths);
        QIcon::setThemeName(themeName);
        QIcon::setFallbackSearchPaths(fallbackSearchPaths);
    }

    QString save(const QString& name, const QColor& color) {
        QImage image(20, 20, QImage::Format_RGB32);
        image.fill(color);
        QString path = folder.filePath(name + QStringLiteral(".png"));
        EXPECT_TRUE(image.save(path));
        return path;
    }

    QTemporaryDir folder;
    QStringList searchPaths = QIcon::themeSearchPaths();
    QString themeName = QIcon::themeName();
    QStringList fallbackSearchPaths = QIcon::fallbackSearchPaths();
    IconItem item;
};

TEST_F(Icons, AMissingIconIsEmpty) {
    EXPECT_TRUE(item.isEmpty());
    for (const QString& source : {QStringLiteral("/nowhere/icon.png"), QStringLiteral("no-such-icon"),
                                  QStringLiteral(":/nowhere.svg"), QString()}) {
        item.setSource(source);
        EXPECT_TRUE(item.isEmpty()) << source.toStdString();
        EXPECT_EQ(middleOf(item), QColor(Qt::transparent)) << source.toStdString();
    }
}

TEST_F(Icons, OnlyRegularFilesAreOpened) {
    for (const char* ending : {".png", ".svg", ""}) {
        const QString pipe = folder.filePath(QStringLiteral("pipe") + QLatin1String(ending));
        ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
        item.setSource(pipe);
        EXPECT_TRUE(item.isEmpty()) << ending;
    }
    item.setSource(folder.path());
    EXPECT_TRUE(item.isEmpty());
}

TEST_F(Icons, AFileThatIsTooLargeForAPictureIsNotRead) {
    const QString path = save(QStringLiteral("editor"), Qt::red);
    ASSERT_TRUE(QFile::resize(path, qint64{17} << 20U));
    item.setSource(path);
    EXPECT_TRUE(item.isEmpty());
}

TEST_F(Icons, AFileIsDrawn) {
    item.setSource(save(QStringLiteral("editor"), Qt::red));
    EXPECT_FALSE(item.isEmpty());
    EXPECT_EQ(middleOf(item), QColor(Qt::red));
    item.setSource({});
    EXPECT_TRUE(item.isEmpty());
}

TEST_F(Icons, TheThemesOwnIconForProgramsStandsForOneThatIsMissing) {
    save(QStringLiteral("application-x-executable"), Qt::blue);
    for (const QString& source : {QStringLiteral("/nowhere/other.png"), QStringLiteral("no-other-icon")}) {
        item.setSource(source);
        EXPECT_FALSE(item.isEmpty()) << source.toStdString();
        EXPECT_EQ(middleOf(item), QColor(Qt::blue)) << source.toStdString();
    }
}

} // namespace
} // namespace corvid
