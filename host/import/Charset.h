// Texts of any charset into UTF-8.
//
// Names    as files write them ("Windows-1252", "latin1", "x-sjis", "GB2312"), in any case; what programs mistake for one
//          another is taken as the larger one (ISO-8859-1 as Windows-1252, GB2312 and GBK as GB18030).
// Bad      a byte that the charset does not know becomes U+FFFD.
// Threads  one at a time for a Charsets; the functions any.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace host::foreign {

class Charsets {
public:
    Charsets() = default;
    Charsets(const Charsets &) = delete;
    Charsets &operator=(const Charsets &) = delete;
    ~Charsets();

    // Absent where nobody knows the charset.
    [[nodiscard]] std::optional<std::string> toUtf8(std::string_view bytes, const std::string &charset);

private:
    void *converter(const std::string &charset);
    std::map<std::string, void *> converters_;   // null: unknown
};

// One spelling for each charset; upper case.
[[nodiscard]] std::string charsetName(std::string_view name);
// One byte, one character, and nearly any bytes are such a text.
[[nodiscard]] bool isSingleByte(const std::string &charset);

// The charset that a byte order mark names, taken off `bytes`; absent without a mark.
[[nodiscard]] std::optional<std::string> takeMark(std::string_view &bytes);
// UTF-16 without a mark shows in its zero bytes. Absent where it does not.
[[nodiscard]] std::optional<std::string> wideCharset(std::string_view bytes);
// The charset of bytes that are not UTF-8, by how its letters lie; Windows-1252 where nothing speaks for another. Looks at
// the first MiB.
[[nodiscard]] std::string likelyCharset(std::string_view bytes);

}  // namespace host::foreign
