#include "platform/desktop/QtPasteboard.h"

#include "support/Utf8.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

void QtPasteboard::setText(std::string_view text)
{
    QGuiApplication::clipboard()->setText(stringFromUtf8(text));
}

std::optional<std::string> QtPasteboard::text() const
{
    const auto *const contents = QGuiApplication::clipboard()->mimeData();
    if (!contents || !contents->hasText())
        return std::nullopt;
    return contents->text().toStdString();
}
