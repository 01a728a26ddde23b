#include "tools/Source.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tools {

namespace {

bool isNamePart(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// The position behind the text in quotes that begins at `at`; a backslash keeps the next character from ending it.
std::size_t behindQuoted(std::string_view source, std::size_t at) {
    const char quote = source[at];
    for (++at; at < source.size() && source[at] != quote && source[at] != '\n'; ++at)
        at += source[at] == '\\';
    return std::min(at + 1, source.size());
}

// The position behind the raw text whose opening quote is at `at`.
std::size_t behindRaw(std::string_view source, std::size_t at) {
    const std::size_t open = source.find('(', at);
    if (open == std::string_view::npos)
        return source.size();
    const std::string end = ")" + std::string(source.substr(at + 1, open - at - 1)) + "\"";
    const std::size_t close = source.find(end, open);
    return close == std::string_view::npos ? source.size() : close + end.size();
}

std::size_t behindComment(std::string_view source, std::size_t at) {
    if (source[at + 1] == '/')
        return std::min(source.find('\n', at), source.size());
    const std::size_t end = source.find("*/", at + 2);
    return end == std::string_view::npos ? source.size() : end + 2;
}

bool opensComment(std::string_view source, std::size_t at) {
    return source[at] == '/' && at + 1 < source.size() && (source[at + 1] == '/' || source[at + 1] == '*');
}

// A quote inside a number parts its digits.
bool opensCharacter(std::string_view source, std::size_t at) {
    return source[at] == '\'' && (at == 0 || !std::isxdigit(static_cast<unsigned char>(source[at - 1])));
}

std::string unescaped(std::string_view literal) {
    std::string result;
    for (std::size_t at = 0; at < literal.size(); ++at) {
        at += literal[at] == '\\' && at + 1 < literal.size();
        result += literal[at];
    }
    return result;
}

struct FirstArgument {
    std::vector<std::string> literals;
    bool isPutTogether = false;
};

// `at` is behind the opening bracket; literals that follow one another directly are one text.
FirstArgument firstArgument(std::string_view code, std::size_t at) {
    FirstArgument result;
    bool joins = false;
    for (int depth = 0; at < code.size();) {
        const char c = code[at];
        if (depth == 0 && (c == ')' || c == ','))
            break;
        if (c == '"') {
            const std::size_t end = behindQuoted(code, at);
            const std::string text = unescaped(code.substr(at + 1, end - at - 2));
            if (joins)
                result.literals.back() += text;
            else
                result.literals.push_back(text);
            joins = true;
            at = end;
            continue;
        }
        depth += (c == '(') - (c == ')');
        result.isPutTogether |= c == '+';
        joins &= std::isspace(static_cast<unsigned char>(c)) != 0;
        ++at;
    }
    return result;
}

} // namespace

std::string withoutComments(std::string_view source) {
    std::string result;
    for (std::size_t at = 0; at < source.size();) {
        std::size_t end = at + 1;
        if (opensComment(source, at)) {
            end = behindComment(source, at);
            for (; at < end; ++at)
                result += source[at] == '\n' ? '\n' : ' ';
            continue;
        }
        if (source[at] == '"')
            end = at > 0 && source[at - 1] == 'R' ? behindRaw(source, at) : behindQuoted(source, at);
        else if (opensCharacter(source, at))
            end = behindQuoted(source, at);
        result += source.substr(at, end - at);
        at = end;
    }
    return result;
}

std::vector<UsedKey> localizedKeys(std::string_view source) {
    constexpr std::string_view kCall = "localized(";
    const std::string code = withoutComments(source);
    std::vector<UsedKey> result;
    for (std::size_t at = code.find(kCall); at != std::string::npos; at = code.find(kCall, at + 1)) {
        if (at > 0 && isNamePart(code[at - 1]))
            continue;
        const FirstArgument argument = firstArgument(code, at + kCall.size());
        const int line = 1 + static_cast<int>(std::count(code.begin(), code.begin() + static_cast<long>(at), '\n'));
        if (!argument.isPutTogether)
            for (const std::string &key : argument.literals)
                result.push_back({key, line});
    }
    return result;
}

std::vector<std::string> sourceFiles(const std::filesystem::path &root, const std::string &folder) {
    std::vector<std::string> result;
    if (!std::filesystem::is_directory(root / folder))
        return result;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(root / folder))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            result.push_back(std::filesystem::relative(entry.path(), root).generic_string());
    std::ranges::sort(result);
    return result;
}

std::string readFile(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace tools
