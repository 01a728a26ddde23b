#include "toolkit/services/StringsFile.h"

#include <cctype>

namespace {

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {
        if (rest_.starts_with("\xEF\xBB\xBF"))
            rest_.remove_prefix(3);
    }

    [[nodiscard]] bool atEnd() {
        skipSpace();
        return rest_.empty() || failed();
    }
    [[nodiscard]] bool failed() const { return !error_.reason.empty(); }
    [[nodiscard]] const StringsFileError &error() const { return error_; }
    void fail(std::string reason) {
        if (!failed())
            error_ = {line_, std::move(reason)};
    }

    std::string quoted() {
        skipSpace();
        if (!take('"')) {
            fail("a quoted text is expected");
            return {};
        }
        std::string text;
        while (!rest_.empty() && rest_.front() != '"')
            step(text);
        if (!take('"'))
            fail("a quoted text does not end");
        return text;
    }
    void expect(char mark) {
        skipSpace();
        if (!take(mark))
            fail(std::string("'") + mark + "' is expected");
    }

private:
    bool take(char c) {
        if (rest_.empty() || rest_.front() != c)
            return false;
        next();
        return true;
    }
    char next() {
        const char c = rest_.front();
        line_ += c == '\n';
        rest_.remove_prefix(1);
        return c;
    }
    void step(std::string &text) {
        const char c = next();
        if (c != '\\' || rest_.empty()) {
            text += c;
            return;
        }
        switch (const char escape = next()) {
        case 'n': text += '\n'; break;
        case 'r': text += '\r'; break;
        case 't': text += '\t'; break;
        case 'U':
        case 'u': unicode::append(text, hexDigits()); break;
        default: text += escape; break;
        }
    }
    char32_t hexDigits() {
        char32_t value = 0;
        for (int i = 0; i < 4 && !rest_.empty() && std::isxdigit(static_cast<unsigned char>(rest_.front())); ++i) {
            const char c = next();
            value = value * 16 + static_cast<char32_t>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        }
        return value;
    }
    void skipSpace() {
        for (;;) {
            while (!rest_.empty() && (rest_.front() == ' ' || (rest_.front() >= '\t' && rest_.front() <= '\r')))
                next();
            if (rest_.starts_with("/*")) {
                while (!rest_.empty() && !rest_.starts_with("*/"))
                    next();
                if (rest_.empty())
                    return fail("a comment does not end");
                rest_.remove_prefix(2);
            } else if (rest_.starts_with("//")) {
                while (!rest_.empty() && rest_.front() != '\n')
                    next();
            } else {
                return;
            }
        }
    }

    std::string_view rest_;
    int line_ = 1;
    StringsFileError error_;
};

}  // namespace

TextTable readStringsFile(std::string_view bytes, StringsFileError *error) {
    TextTable table;
    Reader reader(bytes);
    while (!reader.atEnd()) {
        const NSString key(reader.quoted());
        reader.expect('=');
        const NSString text(reader.quoted());
        reader.expect(';');
        if (!reader.failed() && !table.emplace(key, text).second)
            reader.fail("the key \"" + key.str() + "\" stands twice");
    }
    if (error)
        *error = reader.error();
    return table;
}
