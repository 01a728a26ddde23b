// A foreign file's bytes into a file of the dialect, without the file system: what Handover does between reading and writing.
//
// Errors   FatalParseFailure; `name` names the file in it.
// Cost     one pass, two for a table.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/import/ForeignContact.h"

namespace host::foreign {

using TellLine = std::function<void(std::int64_t line, const std::string &text)>;
// Takes the next bytes of the file.
using Write = std::function<void(std::string_view bytes)>;

struct Rewritten {
    std::int64_t contacts = 0;
    bool isTable = false;   // written as CSV, else as cards
};

[[nodiscard]] Rewritten rewriteCards(std::string_view bytes, const std::string &name, const Write &write, const TellLine &tell);
[[nodiscard]] Rewritten rewriteTable(std::string_view bytes, const std::string &name, const Write &write, const TellLine &tell);

// "card 3 (Ada Lovelace) leaves behind: ..."; nothing where all is carried.
void tellLeftBehind(const char *kind, const ForeignContact &contact, const TellLine &tell);

}  // namespace host::foreign
