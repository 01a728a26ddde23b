#include "tools/StringsFile.h"

#include <map>

namespace tools {

namespace {

struct Escape {
    char letter;
    char character;
};
constexpr Escape kEscapes[] = {{'"', '"'}, {'\\', '\\'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}};

class Parser {
public:
    Parser(std::string_view text, const std::string &file) : text_(text), file_(file) {}

    std::vector<StringsEntry> entries() {
        std::vector<StringsEntry> result;
        for (skipBlanks(); at_ < text_.size(); skipBlanks()) {
            StringsEntry entry;
            entry.file = file_;
            entry.line = line_;
            entry.key = quoted("a key in double quotes");
            expect('=');
            skipBlanks();
            entry.value = quoted("a value in double quotes");
            expect(';');
            result.push_back(std::move(entry));
        }
        return result;
    }

private:
    [[noreturn]] void fail(const std::string &reason) const { throw StringsError(file_, line_, reason); }

    bool startsWith(std::string_view word) const { return text_.substr(at_).starts_with(word); }

    char take() {
        const char c = text_[at_++];
        line_ += c == '\n';
        return c;
    }

    void skipBlanks() {
        while (at_ < text_.size()) {
            if (startsWith("/*"))
                skipBlockComment();
            else if (startsWith("//"))
                while (at_ < text_.size() && text_[at_] != '\n')
                    take();
            else if (std::string_view(" \t\r\n").find(text_[at_]) != std::string_view::npos)
                take();
            else
                return;
        }
    }

    void skipBlockComment() {
        const std::size_t end = text_.find("*/", at_ + 2);
        if (end == std::string_view::npos)
            fail("comment without an end");
        while (at_ < end + 2)
            take();
    }

    void expect(char c) {
        skipBlanks();
        if (at_ == text_.size() || text_[at_] != c)
            fail(std::string("expected ") + c);
        take();
    }

    std::string quoted(const std::string &what) {
        if (at_ == text_.size() || text_[at_] != '"')
            fail("expected " + what);
        take();
        std::string result;
        while (at_ < text_.size() && text_[at_] != '"') {
            const char c = take();
            result += c == '\\' ? escaped() : c;
        }
        if (at_ == text_.size())
            fail("text without a closing quote");
        take();
        return result;
    }

    char escaped() {
        if (at_ < text_.size())
            for (const Escape &escape : kEscapes)
                if (text_[at_] == escape.letter) {
                    take();
                    return escape.character;
                }
        fail("unknown escape after \\");
    }

    std::string_view text_;
    const std::string &file_;
    std::size_t at_ = 0;
    int line_ = 1;
};

std::string quote(const std::string &text) {
    std::string result = "\"";
    for (const char c : text) {
        bool plain = true;
        for (const Escape &escape : kEscapes)
            if (c == escape.character) {
                result += {'\\', escape.letter};
                plain = false;
            }
        if (plain)
            result += c;
    }
    return result + '"';
}

} // namespace

StringsError::StringsError(const std::string &file, int line, const std::string &reason)
    : std::runtime_error(file + ':' + std::to_string(line) + ": " + reason) {}

std::vector<StringsEntry> parseStrings(std::string_view text, const std::string &file) {
    return Parser(text, file).entries();
}

std::vector<StringsEntry> mergeStrings(const std::vector<std::vector<StringsEntry>> &files) {
    std::vector<StringsEntry> result;
    std::map<std::string, const StringsEntry *> seen;
    for (const auto &entries : files)
        for (const StringsEntry &entry : entries) {
            const auto [place, isNew] = seen.emplace(entry.key, &entry);
            if (!isNew)
                throw StringsError(entry.file, entry.line,
                                   "\"" + entry.key + "\" stands already in " + place->second->file + ':' +
                                       std::to_string(place->second->line));
            result.push_back(entry);
        }
    return result;
}

std::string formatStrings(const std::vector<StringsEntry> &entries) {
    std::string result;
    for (const StringsEntry &entry : entries)
        result += quote(entry.key) + " = " + quote(entry.value) + ";\n";
    return result;
}

} // namespace tools
