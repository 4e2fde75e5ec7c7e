#pragma once

class QKeyEvent;

/// Whether the key types a visible character: not white space, not a shortcut.
bool isTypedText(const QKeyEvent &event);
