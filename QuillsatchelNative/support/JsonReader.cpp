#include "support/JsonReader.h"

#include "support/Uuid.h"

#include <QByteArrayView>

namespace JsonReader
{

namespace
{

constexpr QByteArrayView ByteOrderMark("\xEF\xBB\xBF");

QByteArray withoutByteOrderMark(const QByteArray &json)
{
    return json.startsWith(ByteOrderMark) ? json.mid(ByteOrderMark.size()) : json;
}

} // namespace

bool read(dom::element json, std::string &text)
{
    std::string_view value;
    if (json.get(value) != simdjson::SUCCESS)
        return false;
    text = value;
    return true;
}

bool read(dom::element json, QUuid &id)
{
    std::string_view text;
    if (json.get(text) != simdjson::SUCCESS)
        return false;
    const auto uuid = uuidFromText(text);
    id = uuid.value_or(QUuid());
    return uuid.has_value();
}

bool parse(const QByteArray &json, const std::function<bool(dom::element)> &readRoot)
{
    const QByteArray text = withoutByteOrderMark(json);
    if (text.startsWith(ByteOrderMark))
        return false; // newer versions of simdjson skip the second one
    const bool lacksPadding = text.capacity() - text.size() < qsizetype(simdjson::SIMDJSON_PADDING);
    dom::parser parser;
    dom::element root;
    const auto size = static_cast<std::size_t>(text.size());
    return parser.parse(text.constData(), size, lacksPadding).get(root) == simdjson::SUCCESS &&
           readRoot(root);
}

} // namespace JsonReader
