#include "TestSelection.h"
#include "app/DarkAppearance.h"
#include "app/PanelApplication.h"

#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    selectTests(argc, argv);
    const PanelApplication application(argc, argv);
    DarkAppearance::apply();
    return RUN_ALL_TESTS();
}
