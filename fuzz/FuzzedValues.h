#pragma once

#include "support/Utf8.h"

#include <QUuid>

#include <cstddef>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

/// Values of records, made from the fuzzer's bytes.
namespace FuzzedValues
{

inline QUuid uuid(FuzzedDataProvider &data)
{
    const auto number = [&data] { return data.ConsumeIntegral<uchar>(); };
    return { data.ConsumeIntegral<uint>(),
             data.ConsumeIntegral<ushort>(),
             data.ConsumeIntegral<ushort>(),
             number(),
             number(),
             number(),
             number(),
             number(),
             number(),
             number(),
             number() };
}

/// Valid UTF-8.
inline std::string text(FuzzedDataProvider &data)
{
    constexpr std::size_t MaximumSize = 1024;
    return stringFromUtf8(data.ConsumeRandomLengthString(MaximumSize)).toStdString();
}

} // namespace FuzzedValues
