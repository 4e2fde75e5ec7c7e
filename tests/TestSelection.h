#pragma once

/// Limits the run to the tests in the source files that the arguments name, for example
/// "NodeListTest". Without a name, all tests run, and --gtest_filter overrides the names: death
/// tests use it when they start the program again. Call it after testing::InitGoogleTest. Exits
/// with an error if a name matches no test.
void selectTests(int argc, const char *const *argv);
