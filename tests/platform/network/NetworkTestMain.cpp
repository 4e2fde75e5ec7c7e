#include "TestSelection.h"
#include "platform/network/WebPort.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    // The servers are local, so the machine's proxies must not be used.
    for (const auto *const variable : { "http_proxy", "https_proxy", "all_proxy", "no_proxy",
                                        "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY", "NO_PROXY" })
        qunsetenv(variable);
    WebPort::prepare();
    testing::InitGoogleTest(&argc, argv);
    selectTests(argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
