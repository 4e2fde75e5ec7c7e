#include "library/SatchelStore.h"

#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;

TEST(SatchelStoreTest, AFreshStoreHoldsOneEmptyTab)
{
    FakePlatform machine;
    SatchelStore store(machine.platform);
    EXPECT_EQ(store.tabs().get().size(), 1U);
}

} // namespace
