#include "platform/speech/listener/LanguageTag.h"
#include "platform/speech/listener/ListenerService.h"
#include "platform/speech/listener/RecognitionEngines.h"
#include "platform/speech/listener/SpeechModels.h"
#include "support/FileDescriptor.h"
#include "support/WriteAll.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

/// The answers' way out, kept from libraries that print.
FileDescriptor takeStandardOutput()
{
    FileDescriptor output(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    const FileDescriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(nowhere.number(), STDOUT_FILENO);
    return output;
}

} // namespace

/// Understands what is said in the user's language: see ListenerMessage. "--has-model" only asks
/// whether it could, and is told "y" or nothing.
int main(int argc, char *argv[])
{
    // Whoever listens to us may die while we are deep in thought.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // Without room for a dictionary of its own the engine takes that of the model.
    std::signal(SIGXFSZ, SIG_IGN);
    const auto choice = chooseRecognitionEngine(SpeechModels::ofEnvironment(), userLanguageTag());
    if (!choice)
        return EXIT_FAILURE;
    if (argc > 1 && std::string_view(argv[1]) == "--has-model")
        return writeAll(STDOUT_FILENO, "y") ? EXIT_SUCCESS : EXIT_FAILURE;
    const auto output = takeStandardOutput();
    const auto engine = choice->load();
    if (!engine)
        return EXIT_FAILURE;
    ListenerService(*engine, choice->model.tag).serve(STDIN_FILENO, output.number());
    return EXIT_SUCCESS;
}
