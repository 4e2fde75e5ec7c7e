// A listener whose text is the number of samples, and which misbehaves as requested:
//     test_listener [BEHAVIOUR [FILE]]

#include "platform/speech/ListenerMessage.h"
#include "platform/speech/ListenerMessageHeader.h"
#include "platform/speech/ListenerMessageReader.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace
{

using namespace std::chrono_literals;
using Kind = ListenerMessage::Kind;

void put(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written <= 0)
            std::_Exit(EXIT_FAILURE);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void put(const ListenerMessage &message)
{
    std::string stream;
    message.appendTo(stream);
    put(stream);
}

[[noreturn]] void hang()
{
    for (;;)
        std::this_thread::sleep_for(1h);
}

/// The process ID and the open file descriptors.
std::string description()
{
    std::string text = "process " + std::to_string(getpid()) + " files";
    for (const auto &file : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (!std::filesystem::read_symlink(file, error).string().ends_with("/fd"))
            text += ' ' + file.path().filename().string();
    }
    return text;
}

class Listener
{
public:
    explicit Listener(std::string behaviour)
        : m_behaviour(std::move(behaviour))
    {
    }

    void serve()
    {
        ListenerMessageReader reader;
        std::array<char, 4096> bytes {};
        while (!reader.isBroken()) {
            const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
            if (count <= 0)
                return;
            reader.feed(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
            while (const auto message = reader.next())
                receive(*message);
        }
    }

private:
    bool is(std::string_view behaviour) const { return m_behaviour == behaviour; }

    void receive(const ListenerMessage &message)
    {
        if (message.kind == Kind::begin)
            m_samples = 0;
        if (message.kind == Kind::texts || message.kind == Kind::learn)
            put({ .kind = Kind::unchanged, .task = message.task, .payload = {} });
        if (message.kind == Kind::audio)
            processAudio(message);
        if (message.kind == Kind::end)
            finish(message.task);
    }

    void processAudio(const ListenerMessage &message)
    {
        if (is("die at audio"))
            std::abort();
        if (is("hang at audio"))
            hang();
        if (is("hang at more audio") && m_samples > 0)
            hang();
        if (is("answer late"))
            std::this_thread::sleep_for(30ms);
        m_samples += message.samples().size();
        const auto task = is("answer for another task") ? message.task + 1 : message.task;
        if (is("answer final to audio"))
            put({ .kind = Kind::final, .task = task, .payload = "final" });
        else if (is("echo"))
            put(message);
        else
            put({ .kind = Kind::partial, .task = task, .payload = std::to_string(m_samples) });
    }

    void finish(std::uint32_t task)
    {
        if (is("die at end"))
            std::_Exit(EXIT_FAILURE);
        if (is("hang at end"))
            hang();
        auto text = is("describe") ? description() : std::to_string(m_samples);
        if (is("answer in another encoding"))
            text = "gr\xFC\xDF"
                   "e";
        const ListenerMessage final { .kind = Kind::final, .task = task, .payload = text };
        put(final);
        if (is("answer twice"))
            put(final);
    }

    const std::string m_behaviour;
    std::size_t m_samples = 0;
};

/// True if the process has to end.
bool misbehaveAtStart(std::string_view behaviour)
{
    if (behaviour == "die at start")
        return true;
    if (behaviour == "hang at start")
        hang();
    if (behaviour == "load slowly")
        std::this_thread::sleep_for(300ms);
    if (behaviour == "talk nonsense")
        put(std::string_view("2 models loaded, have fun\n"));
    if (behaviour == "talk without being asked")
        put({ .kind = Kind::partial, .task = 1, .payload = "hello" });
    if (behaviour == "promise too much")
        put(std::string(sizeof(ListenerMessageHeader), '\xFF'));
    while (behaviour == "flood")
        put({ .kind = Kind::unchanged, .task = 1, .payload = {} });
    return false;
}

/// True for the first process that is started with this file.
bool isFirst(const std::filesystem::path &file)
{
    const bool isThere = std::filesystem::exists(file);
    std::ofstream(file) << getpid();
    return !isThere;
}

} // namespace

int main(int argc, char *argv[])
{
    std::string behaviour = argc > 1 ? argv[1] : "";
    if (argc > 2 && !isFirst(argv[2]))
        behaviour.clear();
    if (misbehaveAtStart(behaviour))
        return EXIT_FAILURE;
    Listener(behaviour).serve();
    return EXIT_SUCCESS;
}
