#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A web server on 127.0.0.1 whose answers the test defines, including invalid or missing ones.
/// Each connection has a thread and serves one request.
class HttpServer
{
public:
    /// A request and its connection.
    class Exchange
    {
    public:
        Exchange(HttpServer &server, int socket, std::string head);

        /// The request line and header fields as received.
        const std::string &head() const { return m_head; }

        /// The request target.
        std::string target() const;

        /// False once the client has disconnected.
        bool send(std::string_view bytes);

        /// Sends the status line, `fields` (each ends with a line break), Content-Length and the
        /// body, and closes the connection.
        void answer(int status, std::string_view body, const std::string &fields = {});

        /// Sends `bytes` repeatedly until the client disconnects, at most 256 MiB.
        void sendForever(std::string_view bytes);

        /// False if the client disconnected before the time was over.
        bool pause(std::chrono::milliseconds time);

        /// Waits until the client disconnects.
        void waitForDisconnect();

    private:
        HttpServer &m_server;
        int m_socket;
        std::string m_head;
    };

    /// `answer` runs on the connection's thread; its return closes the connection. `port` 0 chooses
    /// a free one. Throws `std::system_error` if the port is not available.
    explicit HttpServer(std::function<void(Exchange &)> answer, std::uint16_t port = 0);

    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    /// Closes all connections.
    ~HttpServer();

    std::uint16_t port() const { return m_port; }

    /// A URL on this server; `path` begins with a slash.
    std::string address(std::string_view path = "/") const;

    /// The requests so far, as in `Exchange::head`, in order of arrival.
    std::vector<std::string> requests() const;

    /// The targets of `requests`.
    std::vector<std::string> targets() const;

    /// The number of open connections.
    int connections() const { return m_open; }

    /// The number of accepted connections. Includes all that began before an answered one.
    int connectionsSoFar() const { return m_accepted; }

    /// The bytes handed to the kernel on all connections.
    std::uint64_t bytesSent() const { return m_bytesSent; }

private:
    void acceptConnections();
    void serve(int socket);
    std::string readHead(int socket) const;

    std::function<void(Exchange &)> m_answer;
    int m_listener;
    std::uint16_t m_port = 0;
    std::atomic<bool> m_isStopping = false;
    std::atomic<int> m_open = 0;
    std::atomic<int> m_accepted = 0;
    std::atomic<std::uint64_t> m_bytesSent = 0;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_requests; // guarded by the mutex, as the next two
    std::list<int> m_sockets;
    std::list<std::thread> m_threads;
    std::thread m_acceptor; // last: it uses all of the above
};
