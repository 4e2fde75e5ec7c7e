#pragma once

#include <QString>

#include <string_view>

/// Capitals at the beginning of sentences, for recognisers that write lower case only.
namespace SentenceStart
{

/// Whether words after `text` (UTF-8) begin a sentence: the text is empty, or ends with a mark
/// that ends a sentence, also before quotation marks and brackets, or its last line has no words.
bool isAfter(std::string_view text);

/// The words with a capital at their beginning. A first word that has a capital elsewhere is a
/// name, such as "iPhone", and stays as it is.
QString capitalized(QString words);

} // namespace SentenceStart
