#include "platform/desktop/TextFormat.h"

#include "support/Utf8.h"

#include <QMimeData>
#include <QStringDecoder>

#include <algorithm>
#include <limits>
#include <string_view>

namespace
{

using namespace Qt::StringLiterals;

constexpr auto PlainText = "text/plain"_L1;
constexpr auto UriList = "text/uri-list"_L1;
constexpr auto Utf8 = "utf-8"_L1;

bool isPlainText(const QString &format)
{
    return format.section(u';', 0, 0).trimmed().compare(PlainText, Qt::CaseInsensitive) == 0;
}

/// Lowercase; empty without such a parameter.
QString charsetOf(const QString &mediaType)
{
    constexpr auto Name = "charset="_L1;
    const auto parameters = mediaType.toLower().split(u';');
    for (const auto &parameter : parameters) {
        const auto trimmed = parameter.trimmed();
        if (trimmed.startsWith(Name))
            return trimmed.sliced(Name.size()).remove(u'"').trimmed();
    }
    return {};
}

/// Text without a declared encoding is UTF-8 on current desktops.
QString encodingOf(const QString &format)
{
    if (format == "STRING"_L1)
        return u"iso-8859-1"_s;
    const auto charset = isPlainText(format) ? charsetOf(format) : QString();
    return charset.isEmpty() || charset == "us-ascii"_L1 || charset == "utf8"_L1 ? Utf8 : charset;
}

bool isKnown(const QString &encoding)
{
    return encoding == Utf8 || QStringDecoder(encoding.toLatin1().constData()).isValid();
}

constexpr int Unsupported = std::numeric_limits<int>::max();

/// Lower is better.
int rank(const QString &format)
{
    if (format == "UTF8_STRING"_L1)
        return 0;
    if (isPlainText(format)) {
        if (!isKnown(encodingOf(format)))
            return Unsupported;
        return charsetOf(format) == Utf8 ? 1 : 2;
    }
    if (format == "STRING"_L1)
        return 3;
    return format == UriList ? 4 : Unsupported;
}

} // namespace

QString TextFormat::best(const QStringList &formats)
{
    const auto found = std::ranges::min_element(formats, {}, rank);
    return found == formats.end() || rank(*found) == Unsupported ? QString() : *found;
}

std::string TextFormat::decoded(const QByteArray &bytes, const QString &format)
{
    if (format == UriList) {
        QMimeData list;
        list.setData(UriList, bytes);
        return list.text().toStdString();
    }
    const auto encoding = encodingOf(format);
    if (encoding == Utf8)
        return stringFromUtf8({ bytes.data(), static_cast<std::size_t>(bytes.size()) })
            .toStdString();
    QStringDecoder decoder(encoding.toLatin1().constData());
    const QString text = decoder(bytes);
    return text.toStdString();
}
