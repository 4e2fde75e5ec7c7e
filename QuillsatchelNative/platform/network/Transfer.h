#pragma once

#include "support/CPointer.h"

#include <QByteArray>

#include <chrono>
#include <cstddef>
#include <curl/curl.h>
#include <optional>
#include <stop_token>
#include <string>

/// The HTTP exchanges of one download, which block the calling thread. A response can have a body
/// of up to 8 MiB and headers of up to 256 KiB.
class Transfer
{
public:
    struct Options {
        /// For all exchanges together, so that a slow server does not keep a thread.
        std::chrono::milliseconds timeout = std::chrono::seconds(60);
        /// CA bundle file; empty for the system's.
        std::string caBundle {};
    };

    struct Response {
        QByteArray body;
        std::string redirect; ///< the absolute target, or empty
    };

    /// The timeout begins here. A request of `stop` ends the current exchange and sends no further
    /// request.
    Transfer(const Options &options, std::stop_token stop);

    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    /// A GET request through `proxy`, or if it is empty, the proxy of the environment (`http_proxy`
    /// and the like). `protocols` are the allowed ones, separated by commas. Any HTTP status counts
    /// as success, and so does a truncated body that is not empty. None if no bytes arrive, the
    /// response exceeds a limit, or the timeout expires.
    std::optional<Response> get(const std::string &address, const std::string &protocols,
                                const std::string &proxy);

private:
    using Clock = std::chrono::steady_clock;

    static std::size_t receiveHeader(char *line, std::size_t itemSize, std::size_t size,
                                     void *self);
    static std::size_t receiveBody(char *bytes, std::size_t itemSize, std::size_t size, void *self);

    void configure(const std::string &caBundle);
    bool perform();
    std::string redirect() const;
    bool hasResponse(CURLcode result) const;
    bool waitForActivity();

    Clock::time_point m_deadline;
    std::stop_token m_stop;
    std::size_t m_headerSize = 0;
    QByteArray m_body;
    CPointer<CURLM, &curl_multi_cleanup> m_multi; // can be woken up, unlike an easy handle
    CPointer<CURL, &curl_easy_cleanup> m_easy;
};
