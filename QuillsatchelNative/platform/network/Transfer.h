#pragma once

#include "platform/gio/CPointer.h"

#include <QByteArray>

#include <chrono>
#include <cstddef>
#include <curl/curl.h>
#include <optional>
#include <stop_token>
#include <string>

/// Exchanges with web servers, one after the other, each of which blocks the calling thread. What
/// an answer can make us hold has limits: 8 MiB of body, 256 KiB of what comes before it.
class Transfer
{
public:
    struct Options {
        /// How long nothing may come before an exchange fails.
        std::chrono::milliseconds silence = std::chrono::seconds(60);
        /// The file of those who are trusted to vouch for a server; empty for the system's.
        std::string authorities {};
    };

    struct Response {
        QByteArray body;
        std::string redirect; ///< the whole address that the server points to, else empty
    };

    /// An exchange fails at once when `stop` is requested, and from then on asks nobody anything.
    Transfer(const Options &options, std::stop_token stop);

    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    /// A GET through `proxy`, as `SystemProxy` names it; through that of the environment variables
    /// known to many programs (`http_proxy` and the like) if it is empty. `protocols`, separated by
    /// commas, are those that the address may be of. None if it fails or the answer is too long; no
    /// status is a failure.
    std::optional<Response> get(const std::string &address, const std::string &protocols,
                                const std::string &proxy);

private:
    using Clock = std::chrono::steady_clock;

    static std::size_t takeHead(char *line, std::size_t one, std::size_t size, void *self);
    static std::size_t takeBody(char *bytes, std::size_t one, std::size_t size, void *self);

    void setUp(const std::string &authorities);
    bool perform();
    bool waitForMore();

    std::chrono::milliseconds m_silence;
    std::stop_token m_stop;
    Clock::time_point m_lastSign; // when something came
    std::size_t m_headSize = 0;
    QByteArray m_body;
    CPointer<CURLM, &curl_multi_cleanup> m_multi; // unlike an easy handle it can be woken up
    CPointer<CURL, &curl_easy_cleanup> m_easy;
};
