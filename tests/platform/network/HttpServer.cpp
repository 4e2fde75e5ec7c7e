#include "platform/network/HttpServer.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cctype>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace
{

using namespace std::chrono_literals;

int check(int result)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category());
    return result;
}

sockaddr *generic(sockaddr_in &address)
{
    return reinterpret_cast<sockaddr *>(&address);
}

std::string targetOf(const std::string &head)
{
    const auto begin = head.find(' ') + 1;
    return head.substr(begin, head.find(' ', begin) - begin);
}

} // namespace

HttpServer::Exchange::Exchange(HttpServer &server, int socket, std::string head)
    : m_server(server)
    , m_socket(socket)
    , m_head(std::move(head))
{
}

std::string HttpServer::Exchange::target() const
{
    return targetOf(m_head);
}

bool HttpServer::Exchange::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto sent = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
        m_server.m_bytesSent += static_cast<std::uint64_t>(sent);
    }
    return true;
}

void HttpServer::Exchange::answer(int status, std::string_view body, const std::string &fields)
{
    send("HTTP/1.1 " + std::to_string(status) + " Status\r\nConnection: close\r\n" + fields +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n");
    send(body);
}

void HttpServer::Exchange::sendForever(std::string_view bytes)
{
    constexpr std::uint64_t MaximumBytes = 256 * 1024 * 1024;
    std::uint64_t sent = 0;
    while (sent < MaximumBytes && send(bytes))
        sent += bytes.size();
}

bool HttpServer::Exchange::pause(std::chrono::milliseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left <= 0ms)
            return true;
        pollfd poll { .fd = m_socket, .events = POLLIN, .revents = 0 };
        ::poll(&poll, 1, static_cast<int>(left.count()));
        std::array<char, 1024> rest {};
        if (poll.revents != 0 && ::recv(m_socket, rest.data(), rest.size(), MSG_DONTWAIT) <= 0)
            return false;
    }
}

void HttpServer::Exchange::waitForDisconnect()
{
    constexpr auto LongerThanAnyTest = 120s;
    pause(LongerThanAnyTest);
}

HttpServer::HttpServer(std::function<void(Exchange &)> answer, std::uint16_t port)
    : m_answer(std::move(answer))
    , m_listener(check(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)))
{
    try {
        const int on = 1;
        check(setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on));
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        check(bind(m_listener, generic(address), sizeof address));
        check(listen(m_listener, SOMAXCONN));
        socklen_t size = sizeof address;
        check(getsockname(m_listener, generic(address), &size));
        m_port = ntohs(address.sin_port);
    } catch (...) {
        close(m_listener);
        throw;
    }
    m_acceptor = std::thread([this] { acceptConnections(); });
}

HttpServer::~HttpServer()
{
    m_isStopping = true;
    shutdown(m_listener, SHUT_RDWR);
    m_acceptor.join();
    close(m_listener);
    {
        const std::lock_guard lock(m_mutex);
        for (const int socket : m_sockets)
            shutdown(socket, SHUT_RDWR);
    }
    for (auto &thread : m_threads)
        thread.join();
}

std::string HttpServer::address(std::string_view path) const
{
    return "http://127.0.0.1:" + std::to_string(m_port) + std::string(path);
}

std::vector<std::string> HttpServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

std::vector<std::string> HttpServer::targets() const
{
    auto targets = requests();
    std::transform(targets.begin(), targets.end(), targets.begin(), targetOf);
    return targets;
}

void HttpServer::acceptConnections()
{
    while (!m_isStopping) {
        const int socket = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            continue;
        const std::lock_guard lock(m_mutex);
        m_sockets.push_back(socket);
        ++m_open;
        ++m_accepted;
        m_threads.emplace_back([this, socket] { serve(socket); });
    }
}

void HttpServer::serve(int socket)
{
    auto head = readHead(socket);
    if (!head.empty()) {
        {
            const std::lock_guard lock(m_mutex);
            m_requests.push_back(head);
        }
        Exchange exchange(*this, socket, std::move(head));
        m_answer(exchange);
    }
    const std::lock_guard lock(m_mutex);
    m_sockets.remove(socket);
    close(socket);
    --m_open;
}

// Empty if the client disconnects first, one byte if the request is not HTTP.
std::string HttpServer::readHead(int socket) const
{
    std::string head;
    char next = 0;
    const auto isComplete = [&head] {
        const bool isHttp = std::isupper(static_cast<unsigned char>(head.front())) != 0;
        return !isHttp || head.ends_with("\r\n\r\n");
    };
    while (head.empty() || !isComplete()) {
        if (recv(socket, &next, 1, 0) <= 0)
            return {};
        head += next;
    }
    return head;
}
