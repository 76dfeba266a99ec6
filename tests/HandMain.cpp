#include <gtest/gtest.h>

#include <QApplication>

#include <algorithm>
#include <string_view>

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv, argv + argc);
    testing::InitGoogleTest(&argc, argv);
    // Asked for the names alone, no display is needed.
    if (std::ranges::find(arguments, "--gtest_list_tests") != arguments.end())
        return RUN_ALL_TESTS();
    // Without a display Qt would abort before the tests can say what is missing.
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
