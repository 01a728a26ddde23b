// Cases of a test, written as a text below tests/samples:
//
//     What stands before the first case, and a line that begins with "## ", says something to people.
//     === nameOfTheFirstCase
//     its first part, the lines joined by line feeds, without one at the end
//     ---
//     its second part
//     === nameOfTheSecondCase
//
// ‹FF 0D› stands for these bytes. A file that is not there throws, and so does a case with another number of parts.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

struct Case {
    std::string name;
    std::vector<std::string> parts;
};
void PrintTo(const Case &row, std::ostream *out);

[[nodiscard]] std::vector<Case> casesOf(const std::string &sample, std::size_t parts = 2);
[[nodiscard]] std::string nameOfCase(const testing::TestParamInfo<Case> &row);
// The text with a carriage return before each line feed.
[[nodiscard]] std::string withReturns(std::string_view text);
