#pragma once

/// Whether the user lets the program listen to speech.
enum class SpeechAuthorizationStatus {
    notDetermined,
    denied,
    restricted,
    authorized
};
