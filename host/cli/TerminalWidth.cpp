#include "host/cli/TerminalWidth.h"

#include <locale.h>
#include <wchar.h>

#include "toolkit/NSString.h"

namespace host::cli {

namespace {

// What wcwidth knows depends on the thread's locale; the person's may know nothing beyond ASCII.
class UnicodeLocale {
public:
    UnicodeLocale() {
        static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        if (unicode)
            before_ = uselocale(unicode);
    }
    ~UnicodeLocale() {
        if (before_)
            uselocale(before_);
    }
    UnicodeLocale(const UnicodeLocale &) = delete;
    UnicodeLocale &operator=(const UnicodeLocale &) = delete;

private:
    locale_t before_ = nullptr;
};

std::size_t widthOf(char32_t c) {
    const int width = wcwidth(static_cast<wchar_t>(c));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

std::size_t terminalWidth(std::string_view text) {
    const UnicodeLocale locale;
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += widthOf(unicode::next(text, at));
    return width;
}

std::string_view cutToWidth(std::string_view text, std::size_t columns) {
    const UnicodeLocale locale;
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t before = at;
        width += widthOf(unicode::next(text, at));
        if (width > columns)
            return text.substr(0, before);
    }
    return text;
}

}  // namespace host::cli
