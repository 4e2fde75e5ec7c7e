// Dictates through the given listener until it is killed:
//     dictating_program LISTENER (busy | idle)

#include "platform/desktop/QtMainQueue.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/Recognition.h"

#include <QCoreApplication>

#include <cstdio>
#include <string_view>

int main(int argc, char *argv[])
{
    if (argc != 3)
        return 1;
    const QCoreApplication application(argc, argv);
    QtMainQueue mainQueue;
    ListenerRecognizer recognizer({ argv[1] }, mainQueue);
    Recognition recognition(recognizer);
    recognition.append(1024);
    const bool isBusy = std::string_view(argv[2]) == "busy";
    if (isBusy) {
        // Takes long to decode once the model is loaded.
        Recognition::Samples noise(30 * 16'000);
        for (std::size_t index = 0; index < noise.size(); ++index)
            noise[index] = static_cast<std::int16_t>((index * index * 7'919) >> 3);
        recognition.request->append(noise);
    } else {
        recognition.request->endAudio();
        recognition.waitForEnd();
    }
    std::puts("dictating");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
