#include "support/Utf8.h"

QString stringFromUtf8(std::string_view text)
{
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (text.starts_with(ByteOrderMark))
        string.prepend(QChar::ByteOrderMark);
    return string;
}
