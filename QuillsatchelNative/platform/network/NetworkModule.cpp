#include "platform/network/CurlHttpClient.h"

extern "C" Q_DECL_EXPORT HttpClient *make(MainQueue &mainQueue);

HttpClient *make(MainQueue &mainQueue)
{
    return std::make_unique<CurlHttpClient>(mainQueue).release();
}
