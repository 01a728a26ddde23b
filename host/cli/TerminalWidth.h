#pragma once

#include <cstddef>
#include <string_view>

namespace host::cli {

// Columns that a terminal takes for `text`: two for a wide character, none for a combining one (wcwidth of POSIX). Bad UTF-8
// counts as U+FFFD, as it is shown.
[[nodiscard]] std::size_t terminalWidth(std::string_view text);

// The longest start of `text` that fits into `columns`, never cut inside a character.
[[nodiscard]] std::string_view cutToWidth(std::string_view text, std::size_t columns);

}  // namespace host::cli
