// The CSV readers step by step on whole texts, quadratic and plain: what the real ones are compared with.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace plainCsv {

struct Fatal {};
using Texts = std::vector<std::string>;

// Throw Fatal where a character is read that is not there.
[[nodiscard]] std::string replaceCommaSymbol(std::string text);
[[nodiscard]] Texts combine(const Texts &fields);
[[nodiscard]] std::string replaceQuotes(std::string text);
[[nodiscard]] std::string deleteQuotes(std::string text);
[[nodiscard]] std::string change(std::string text);
[[nodiscard]] std::string backslashes(std::string text);
[[nodiscard]] Texts split(const std::string &text, const std::string &separator);

// One line per contact, "Given Name=..." for the columns of `read`, groups as "Phone(type)=number"; in column order.
[[nodiscard]] std::string first(const std::string &bytes);
[[nodiscard]] std::string second(const std::string &bytes);

}   // namespace plainCsv
