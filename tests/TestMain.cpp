#include "TestSelection.h"

#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    selectTests(argc, argv);
    return RUN_ALL_TESTS();
}
