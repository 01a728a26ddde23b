// What every page of messages has alike: its style, its script, and how texts stand in HTML. Threads: any.
#pragma once

#include <string>
#include <string_view>

namespace messagePage {

// Both go in as they are; the policy names them by their hash, so nothing may be added to them.
extern const std::string_view kStyle, kScript;
// Of the policy's meta element.
[[nodiscard]] const std::string &policy();

// `text` as characters of an element or of a quoted attribute: well-formed UTF-8 without controls that HTML forbids.
void appendEscaped(std::string &out, std::string_view text);
// The same, web addresses (http, https) as links.
void appendLinked(std::string &out, std::string_view text);
// A file's name as a relative address.
void appendAddress(std::string &out, std::string_view fileName);
// Nothing but a few emoji, which show large.
[[nodiscard]] bool isEmojiOnly(std::string_view text);

enum class FileKind { picture, heic, sound, video, other };
// By the extension; what browsers show.
[[nodiscard]] FileKind kindOf(std::string_view fileName);

}  // namespace messagePage
