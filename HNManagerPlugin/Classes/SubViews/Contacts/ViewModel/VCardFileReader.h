// Reads the card files (.vcf) that an iPhone or our own exporter writes. No general vCard reader: one line is one
// property, names are case sensitive, folded lines are not joined, no charset and no quoted-printable. A round trip
// depends on the oddities; other programs' files are rewritten into this shape before they come here.
//
// Input    UTF-8 as stored. A byte order mark is a character like any other, and so is a NUL. Lines end at LF; a CR
//          before it belongs to the line (labels and telephone numbers count on it, see the source).
// Result   one record per "END:VCARD" anywhere in the text, in file order; blank ones at the end where there are more
//          of these than cards. Texts that the card lacks are absent. Never sets pKey or completeName.
// Nothing  a file that cannot be opened, is not a regular file or is not UTF-8 gives the empty list; `whyNothing` tells
//          people the reason.
// Errors   FatalParseFailure with file, line (from 1) and reason; nothing of the file is then given.
// Cost     one pass over one buffer: the file's size beside the result.
// Threads  any, no state between calls.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class VCardFileReader {
public:
    // Gets the log texts of the scan (one at each card's start and end), inside the call.
    using Log = std::function<void(std::string_view)>;

    [[nodiscard]] static ContactList read(const NSString &path, const Log &log = {});
    // The same on a text in memory that must be UTF-8; `file` only names it in a failure.
    [[nodiscard]] static ContactList readText(std::string_view utf8, const NSString &file, const Log &log = {});

    // The text without any LF and CR; absent stays absent.
    [[nodiscard]] static NSString deleteEnterChar(const NSString &text);

    // Why `read` gives an empty list without looking at a line.
    struct Unreadable {
        std::optional<std::int64_t> line;   // of the first byte that is not UTF-8, from 1; absent: not to be opened
        NSString reason;
    };
    // Absent where the file can be opened and is UTF-8.
    [[nodiscard]] static std::optional<Unreadable> whyNothing(const NSString &path);
};
