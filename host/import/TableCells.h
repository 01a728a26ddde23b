// The rows of a CSV text (RFC 4180): cells in quotes may hold separators, quotes (doubled) and line breaks.
//
// Input    UTF-8. Lines end at LF, CR LF or CR. A quote within a cell that did not begin with one is a character; text behind
//          a closing quote belongs to the cell.
// Errors   FatalParseFailure where a quote that opens a cell is never closed.
// Cost     one pass; a row is held once. Threads: one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::foreign {

class TableCells {
public:
    // The text must outlive this; `file` names it in a failure.
    TableCells(std::string_view text, char separator, std::string file);

    // The next row; false at the end. A blank line is a row of one empty cell.
    [[nodiscard]] bool next();
    [[nodiscard]] std::size_t count() const { return ends_.size(); }
    // "" beyond the last one; valid until the next call.
    [[nodiscard]] std::string_view cell(std::size_t index) const;
    // Of the row's first physical line, from 1.
    [[nodiscard]] std::int64_t line() const { return line_; }
    [[nodiscard]] std::int64_t lines() const { return taken_ - line_ + 1; }   // physical ones of this row
    // No stray quotes so far.
    [[nodiscard]] bool isStrict() const { return isStrict_; }

private:
    void takeQuoted();
    void takePlain();
    bool takeLineEnd();

    std::string_view text_;
    char separator_;
    std::string file_;
    std::size_t at_ = 0;
    std::int64_t line_ = 0, taken_ = 0;
    bool isStrict_ = true;
    std::string row_;
    std::vector<std::size_t> ends_;   // of each cell in `row_`
};

// The separator of a table by its first line: comma, semicolon or tab, whichever stands there most often outside quotes.
[[nodiscard]] char separatorOf(std::string_view text);

}  // namespace host::foreign
