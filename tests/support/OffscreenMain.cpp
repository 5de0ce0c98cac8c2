// Views are tested on a screen that is only memory.
#include <QApplication>
#include <clocale>
#include <gtest/gtest.h>

int main(int argumentCount, char **arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argumentCount, arguments);
    QApplication application(argumentCount, arguments);
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
