#include "toolkit/services/PropertyList.h"

#include <cstdlib>
#include <optional>

#include "toolkit/services/NSFileManager.h"

Value NSDictionary::valueForKey(std::string_view key) {
    for (const auto &[name, value] : entries)
        if (name.view() == key)
            return value;
    return {};
}

namespace {

constexpr int kMostLevels = 64;

struct Tag {
    std::string name;
    bool opens = false, closes = false;   // <a/> does both
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    std::optional<Value> plist() {
        auto tag = nextTag();
        if (tag && tag->name == "plist")
            tag = nextTag();
        return tag ? element(*tag, 0) : std::nullopt;
    }

private:
    // The next element tag; comments, processing instructions and the document type are passed over.
    std::optional<Tag> nextTag() {
        for (;;) {
            const std::size_t open = rest_.find('<');
            if (open == std::string_view::npos)
                return std::nullopt;
            rest_.remove_prefix(open);
            if (rest_.starts_with("<!--")) {
                const std::size_t end = rest_.find("-->");
                if (end == std::string_view::npos)
                    return std::nullopt;
                rest_.remove_prefix(end + 3);
                continue;
            }
            const std::size_t end = rest_.find('>');
            if (end == std::string_view::npos)
                return std::nullopt;
            const std::string_view inside = rest_.substr(1, end - 1);
            rest_.remove_prefix(end + 1);
            if (inside.empty() || inside.front() == '?' || inside.front() == '!')
                continue;
            Tag tag;
            tag.closes = inside.front() == '/' || inside.back() == '/';
            tag.opens = inside.front() != '/';
            const std::size_t first = inside.front() == '/' ? 1 : 0;
            tag.name = inside.substr(first, inside.find_first_of(" \t\r\n/", first) - first);
            return tag;
        }
    }

    // The text up to the closing tag of this name.
    std::optional<std::string> content(const Tag &tag) {
        if (tag.closes)
            return std::string();
        const std::size_t end = rest_.find("</" + tag.name);
        if (end == std::string_view::npos)
            return std::nullopt;
        std::string text = unescaped(rest_.substr(0, end));
        rest_.remove_prefix(end);
        nextTag();
        return text;
    }

    static std::string unescaped(std::string_view raw) {
        static constexpr std::pair<std::string_view, char> kEntities[] = {
            {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
        std::string text;
        while (!raw.empty()) {
            bool known = false;
            for (const auto &[entity, character] : kEntities)
                if (raw.starts_with(entity)) {
                    text += character;
                    raw.remove_prefix(entity.size());
                    known = true;
                    break;
                }
            if (known)
                continue;
            const std::size_t end = raw.find(';');
            if (raw.starts_with("&#") && end != std::string_view::npos && end < 12) {
                const std::string number(raw.substr(2, end - 2));
                const bool hex = number.starts_with("x");
                unicode::append(text, static_cast<char32_t>(std::strtoul(number.c_str() + (hex ? 1 : 0), nullptr, hex ? 16 : 10)));
                raw.remove_prefix(end + 1);
                continue;
            }
            text += raw.front();
            raw.remove_prefix(1);
        }
        return text;
    }

    std::optional<Value> element(const Tag &tag, int level) {
        if (!tag.opens || level > kMostLevels)
            return std::nullopt;
        if (tag.name == "dict")
            return dictionary(tag, level);
        if (tag.name == "array")
            return array(tag, level);
        const auto text = content(tag);
        if (!text)
            return std::nullopt;
        if (tag.name == "true" || tag.name == "false")
            return Value(tag.name == "true");
        if (tag.name == "integer")
            return Value(NSString(*text).integerValue());
        if (tag.name == "real")
            return Value(NSString(*text).doubleValue());
        if (tag.name == "string" || tag.name == "date" || tag.name == "data")
            return Value(NSString(*text));
        return std::nullopt;
    }

    std::optional<Value> dictionary(const Tag &tag, int level) {
        auto result = make<NSDictionary>();
        if (tag.closes)
            return Value(result);
        for (auto key = nextTag(); key; key = nextTag()) {
            if (!key->opens)
                return key->name == "dict" ? std::optional<Value>(result) : std::nullopt;
            const auto name = key->name == "key" ? content(*key) : std::nullopt;
            const auto valueTag = name ? nextTag() : std::nullopt;
            auto value = valueTag ? element(*valueTag, level + 1) : std::nullopt;
            if (!value)
                return std::nullopt;
            result->entries.emplace_back(NSString(*name), std::move(*value));
        }
        return std::nullopt;
    }

    std::optional<Value> array(const Tag &tag, int level) {
        Value::List list;
        if (tag.closes)
            return Value(std::move(list));
        for (auto next = nextTag(); next; next = nextTag()) {
            if (!next->opens)
                return next->name == "array" ? std::optional<Value>(std::move(list)) : std::nullopt;
            auto value = element(*next, level + 1);
            if (!value)
                return std::nullopt;
            list.push_back(std::move(*value));
        }
        return std::nullopt;
    }

    std::string_view rest_;
};

}  // namespace

Value propertyListFromXML(std::string_view bytes) { return Reader(bytes).plist().value_or(Value()); }

Value propertyListWithContentsOfFile(const NSString &path) {
    const auto bytes = NSFileManager::contentsAtPath(path);
    return bytes ? propertyListFromXML(*bytes) : Value();
}
