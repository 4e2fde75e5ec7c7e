#include "platform/network/CurlHttpClient.h"

extern "C" Q_DECL_EXPORT HttpClient *make();

HttpClient *make()
{
    return std::make_unique<CurlHttpClient>().release();
}
