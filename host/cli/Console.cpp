#include "host/cli/Console.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "host/cli/Interrupts.h"
#include "host/cli/TerminalWidth.h"

namespace host::cli {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr int kLookMilliseconds = 100;   // a signal may have gone to another thread

std::string shown(std::string_view text, bool keepsLines) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = unicode::next(text, at);
        unicode::append(result, unicode::isControl(c) && !(keepsLines && c == '\n') ? kReplacement : c);
    }
    return result;
}

}  // namespace

std::string forPeople(const NSString &text) { return shown(text.view(), false); }
std::string linesForPeople(const NSString &text) { return shown(text.view(), true); }

Json toJson(const NSString &text) {
    if (text.isNil())
        return nullptr;
    return text.str();
}

Console::Console() : Console(isatty(STDIN_FILENO) && isatty(STDERR_FILENO), isatty(STDERR_FILENO)) {}

bool Console::isOneScreen() { return isatty(STDOUT_FILENO) && isatty(STDERR_FILENO); }

void Console::line(const std::string &text) {
    const std::size_t end = text.find_last_not_of(' ');
    std::cout << std::string_view(text).substr(0, end == std::string::npos ? 0 : end + 1) << '\n';
}

void Console::table(const std::vector<std::vector<std::string>> &rows) {
    std::vector<std::size_t> widths;
    for (const auto &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], terminalWidth(row[i]));
    }
    for (const auto &row : rows) {
        std::string text;
        for (std::size_t i = 0; i < row.size(); ++i)
            text += row[i] + std::string(widths[i] - terminalWidth(row[i]) + 2, ' ');
        line(text);
    }
}

void Console::document(const Json &document) {
    std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void Console::message(const std::string &text) {
    const std::scoped_lock lock(mutex_);
    clearLine();
    std::cerr << "hnmanager: " << linesForPeople(NSString(text)) << std::endl;
}

bool Console::flush() { return static_cast<bool>(std::cout.flush()); }

std::optional<std::string> Console::ask(const std::string &question) {
    {
        const std::scoped_lock lock(mutex_);
        clearLine();
        std::cerr << linesForPeople(NSString(question)) << std::flush;
    }
    std::string answer;
    while (!isInterrupted()) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, kLookMilliseconds) <= 0)
            continue;
        char c = 0;
        if (read(STDIN_FILENO, &c, 1) != 1)
            break;
        if (c == '\n')
            return answer;
        answer += c;
    }
    return std::nullopt;
}

std::optional<std::string> Console::askSecret(const std::string &question) {
    termios before{};
    if (tcgetattr(STDIN_FILENO, &before) != 0)
        return std::nullopt;
    termios quiet = before;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    auto answer = ask(question);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
    std::cerr << '\n';
    return answer;
}

void Console::progress(const std::string &text) {
    const std::scoped_lock lock(mutex_);
    std::cerr << '\r' << text << "\x1b[K" << std::flush;
    hasProgress_ = true;
}

void Console::clearProgress() {
    const std::scoped_lock lock(mutex_);
    clearLine();
}

void Console::clearLine() {
    if (std::exchange(hasProgress_, false))
        std::cerr << "\r\x1b[K" << std::flush;
}

}  // namespace host::cli
