#include "tests/support/Cases.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/TempFolder.h"

namespace {

constexpr std::string_view kOpen = "\u2039", kClose = "\u203A";

std::string withBytes(std::string line) {
    for (std::size_t from = 0; (from = line.find(kOpen, from)) != std::string::npos;) {
        const std::size_t end = line.find(kClose, from);
        std::istringstream digits(line.substr(from + kOpen.size(), end - from - kOpen.size()));
        std::string bytes;
        for (std::string pair; digits >> pair;)
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
        line.replace(from, end + kClose.size() - from, bytes);
        from += bytes.size();
    }
    return line;
}

}   // namespace

void PrintTo(const Case &row, std::ostream *out) { *out << row.parts.front(); }

std::string nameOfCase(const testing::TestParamInfo<Case> &row) { return row.param.name; }

std::string withReturns(std::string_view text) {
    std::string lines;
    for (const char c : text)
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    return lines;
}

std::vector<Case> casesOf(const std::string &sample, std::size_t parts) {
    std::vector<Case> cases;
    std::istringstream lines(readFile(std::string(HN_SAMPLES_DIR "/") + sample));
    bool isFirstLine = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("=== ")) {
            cases.push_back({line.substr(4), {""}});
            isFirstLine = true;
        } else if (!cases.empty() && line == "---") {
            cases.back().parts.emplace_back();
            isFirstLine = true;
        } else if (!cases.empty() && !line.starts_with("## ")) {
            cases.back().parts.back() += (isFirstLine ? "" : "\n") + withBytes(line);
            isFirstLine = false;
        }
    }
    for (const Case &row : cases)
        if (row.parts.size() != parts)
            throw std::runtime_error(sample + ": " + row.name + " has " + std::to_string(row.parts.size()) + " parts");
    if (cases.empty())
        throw std::runtime_error(sample + ": no cases");
    return cases;
}
