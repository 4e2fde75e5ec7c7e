#include "platform/desktop/QtPasteboard.h"

#include "platform/desktop/TextFormat.h"
#include "platform/desktop/X11Connection.h"
#include "platform/desktop/X11SelectionReader.h"
#include "support/Utf8.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <chrono>

namespace
{

using namespace std::chrono_literals;

constexpr auto Timeout = 1s;

QClipboard &clipboard()
{
    return *QGuiApplication::clipboard();
}

const char *selectionName(QClipboard::Mode mode)
{
    return mode == QClipboard::Clipboard ? "CLIPBOARD" : "PRIMARY";
}

// Our own contents need no request, and this process could not answer one while it waits.
bool isOwnedByOtherX11Client(QClipboard::Mode mode)
{
    auto *const connection = X11Connection::current();
    if (!connection)
        return false;
    const auto selection = X11Connection::atom(connection, selectionName(mode));
    return !X11Connection::hasCreated(connection,
                                      X11Connection::selectionOwner(connection, selection));
}

X11SelectionReader readerOf(QClipboard::Mode mode)
{
    return { selectionName(mode), Timeout };
}

std::optional<std::string> textFromX11(QClipboard::Mode mode)
{
    auto reader = readerOf(mode);
    const QString format = TextFormat::best(reader.formats());
    const auto bytes = format.isEmpty() ? std::nullopt : reader.data(format);
    return bytes ? std::optional(TextFormat::decoded(*bytes, format)) : std::nullopt;
}

// Fetches one format, once: on Wayland Qt waits up to a second for each request.
std::optional<std::string> textFromQt(QClipboard::Mode mode)
{
    const auto *const contents = clipboard().mimeData(mode);
    const QString format = contents ? TextFormat::best(contents->formats()) : QString();
    const QByteArray bytes = format.isEmpty() ? QByteArray() : contents->data(format);
    return bytes.isNull() ? std::nullopt : std::optional(TextFormat::decoded(bytes, format));
}

std::optional<std::string> textIn(QClipboard::Mode mode)
{
    return isOwnedByOtherX11Client(mode) ? textFromX11(mode) : textFromQt(mode);
}

} // namespace

void QtPasteboard::setText(std::string_view text)
{
    clipboard().setText(stringFromUtf8(text));
}

std::optional<std::string> QtPasteboard::text() const
{
    return textIn(QClipboard::Clipboard);
}

bool QtPasteboard::hasText() const
{
    if (isOwnedByOtherX11Client(QClipboard::Clipboard))
        return !TextFormat::best(readerOf(QClipboard::Clipboard).formats()).isEmpty();
    const auto *const contents = clipboard().mimeData();
    return contents && !TextFormat::best(contents->formats()).isEmpty();
}

std::optional<std::string> QtPasteboard::selectedText() const
{
    return clipboard().supportsSelection() ? textIn(QClipboard::Selection) : std::nullopt;
}
