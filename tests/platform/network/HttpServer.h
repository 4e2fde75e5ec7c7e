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

/// A web server on 127.0.0.1 that answers as the test says, also wrongly and never. Each connection
/// has a thread and one request.
class HttpServer
{
public:
    /// A request, and the way back to who made it.
    class Exchange
    {
    public:
        Exchange(HttpServer &server, int socket, std::string head);

        /// The request line and the fields, as they arrived.
        const std::string &head() const { return m_head; }

        /// The second word of the request line.
        std::string target() const;

        /// False once nobody listens.
        bool send(std::string_view bytes);

        /// Sends the status line, the fields (each ends a line), how long the body is, and the
        /// body. The connection is not kept.
        void answer(int status, std::string_view body, const std::string &fields = {});

        /// Sends `bytes` until nobody listens, but no more than 256 MiB.
        void sendForever(std::string_view bytes);

        /// False if the client hung up before the time was over.
        bool pause(std::chrono::milliseconds time);

        /// Says nothing until the client hangs up.
        void waitForHangUp();

    private:
        HttpServer &m_server;
        int m_socket;
        std::string m_head;
    };

    /// `answer` runs on a thread of the connection's; on return the connection is closed. `port` 0
    /// is any that is free. Throws `std::system_error` where the port cannot be had.
    explicit HttpServer(std::function<void(Exchange &)> answer, std::uint16_t port = 0);

    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    /// Cuts every connection.
    ~HttpServer();

    std::uint16_t port() const { return m_port; }

    /// Of something on this server; `path` begins with a slash.
    std::string address(std::string_view path = "/") const;

    /// The heads of the requests so far, in the order in which they arrived.
    std::vector<std::string> requests() const;

    /// The targets of the requests so far, as in `requests`.
    std::vector<std::string> targets() const;

    /// How many connections are open.
    int connections() const { return m_open; }

    /// How many connections there have been: all that began before one that was answered are
    /// counted.
    int connectionsSoFar() const { return m_accepted; }

    /// Bytes that the system took for sending, of all connections.
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
    std::vector<std::string> m_requests; // under the mutex, as is what follows
    std::list<int> m_sockets;
    std::list<std::thread> m_threads;
    std::thread m_acceptor; // last: it uses all of the above
};
