#include "platform/speech/listener/LanguageTag.h"
#include "platform/speech/listener/ListenerService.h"
#include "platform/speech/listener/ProcessLimits.h"
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

/// A copy of stdout for the answers. What libraries print is discarded.
FileDescriptor reserveStandardOutput()
{
    FileDescriptor output(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    const FileDescriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(nowhere.number(), STDOUT_FILENO);
    return output;
}

} // namespace

/// Recognises speech in the user's language; ListenerMessage is the protocol. "--has-model" only
/// prints "y" if there is a model, and nothing otherwise.
int main(int argc, char *argv[])
{
    // Exit with the parent, even while decoding.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    forbidCoreDumps();
    // Under a file size limit the engine falls back to the dictionary of the model.
    std::signal(SIGXFSZ, SIG_IGN);
    const auto choices = chooseRecognitionEngines(recognitionEngineKinds(),
                                                  SpeechModels::ofEnvironment(), userLanguageTag());
    if (choices.empty())
        return EXIT_FAILURE;
    if (argc > 1 && std::string_view(argv[1]) == "--has-model")
        return writeAll(STDOUT_FILENO, "y") ? EXIT_SUCCESS : EXIT_FAILURE;
    const auto output = reserveStandardOutput();
    limitMemory();
    for (const auto &choice : choices) {
        if (const auto engine = choice.load()) {
            ListenerService(*engine, choice.model.tag).serve(STDIN_FILENO, output.number());
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
