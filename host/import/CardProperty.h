// One property of a card, "item1.TEL;TYPE=home,voice;PREF=1:+1 555", taken apart.
//
// Names    group, name and parameter names in any case; kept in upper case but for the group.
// Params   a bare word (vCard 2.1) has the name TYPE, or ENCODING where it is one; values in double quotes may hold ":", ";"
//          and ","; ^n ^^ ^' as in RFC 6868.
// Value    bytes as they stand; text() and parts() decode transfer encoding and charset and undo the escapes.
// Threads  values.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::foreign {

class CardProperty {
public:
    // Bytes of one value in the charset (absent: none is named) to UTF-8.
    using Decode = std::function<std::string(std::string_view bytes, const std::optional<std::string> &charset)>;

    // Absent where the line is none: no colon, no name.
    [[nodiscard]] static std::optional<CardProperty> parse(std::string_view line);

    std::string group, name;
    std::string_view value;   // of the line that it was parsed from

    // The first value of a parameter; absent without it.
    [[nodiscard]] std::optional<std::string> parameter(std::string_view name) const;
    // Upper case.
    [[nodiscard]] std::vector<std::string_view> parameterNames() const;
    // All words under TYPE, lists cut at commas.
    [[nodiscard]] std::vector<std::string> types() const;
    [[nodiscard]] bool isBase64() const;
    [[nodiscard]] bool isQuotedPrintable() const;

    // The whole value as one text, escapes undone.
    [[nodiscard]] std::string text(const Decode &decode) const;
    // The value cut at each ";" (or ",") that no backslash hides.
    [[nodiscard]] std::vector<std::string> parts(char separator, const Decode &decode) const;
    // The bytes of a base64 value; absent where it is none. A "data:" address is one too.
    [[nodiscard]] std::optional<std::string> bytes() const;

private:
    struct Parameter {
        std::string name, value;
    };
    bool readHead(std::string_view head);
    void addParameter(std::string_view text);
    [[nodiscard]] std::string decoded(std::string_view piece, const Decode &decode) const;
    std::vector<Parameter> parameters_;
};

// "\n", "\,", "\;", "\:", "\\" and quotes; other backslashes stay.
[[nodiscard]] std::string unescaped(std::string_view text);
[[nodiscard]] std::string quotedPrintableDecoded(std::string_view text);
// Base64 of either alphabet, blanks passed over; absent where other characters stand in it.
[[nodiscard]] std::optional<std::string> base64Decoded(std::string_view text);

}  // namespace host::foreign
