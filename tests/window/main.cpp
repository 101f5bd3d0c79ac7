#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Discovery of the tests starts the program without the tests' environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("SDL_AUDIODRIVER"))
        qputenv("SDL_AUDIODRIVER", "dummy"); // nobody wants to hear the tests
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
