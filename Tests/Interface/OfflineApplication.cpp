#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QQuickWindow>

/// The tests draw into memory, in light and in English, independent of the user's settings.
int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
