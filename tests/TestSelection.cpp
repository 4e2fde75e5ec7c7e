#include "TestSelection.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

namespace
{

std::string fileName(const testing::TestSuite &suite)
{
    return std::filesystem::path(suite.GetTestInfo(0)->file()).stem();
}

/// A GoogleTest filter for the suites in the source file `name`.cpp; empty if there are none.
std::string filterForFile(std::string_view name)
{
    const auto &tests = *testing::UnitTest::GetInstance();
    std::string filter;
    for (int index = 0; index < tests.total_test_suite_count(); ++index) {
        const auto &suite = *tests.GetTestSuite(index);
        if (fileName(suite) == name)
            filter += std::string(suite.name()) + ".*:";
    }
    return filter;
}

} // namespace

void selectTests(int argc, const char *const *argv)
{
    if (GTEST_FLAG_GET(filter) != "*")
        return;
    std::string filter;
    for (int index = 1; index < argc; ++index) {
        const std::string ofFile = filterForFile(argv[index]);
        if (ofFile.empty()) {
            std::cerr << "No test source file is named " << argv[index] << ".\n";
            std::exit(EXIT_FAILURE);
        }
        filter += ofFile;
    }
    if (!filter.empty())
        GTEST_FLAG_SET(filter, filter);
}
