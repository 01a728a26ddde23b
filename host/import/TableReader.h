// Reads the tables of contacts of any program: a heading line and a row a contact, CSV with comma, semicolon or tab.
//
// Input    the bytes of a whole file: UTF-8, UTF-16 or UTF-32 with or without a mark, else the charset by how its letters lie.
//          "sep=;" may stand before the headings.
// Result   one contact a row, in file order, through `visit`, as often as read() is called; what no field takes stands in its
//          `notCarried`. Cells with several values (" ::: ") make several items.
// Own      a table whose headings are the dialect's has its escapes (backslash-n, two backslashes); no other has.
// Errors   FatalParseFailure with file, line and reason: no heading line, no heading that is known, an open quote.
// Cost     one pass a read(); beside the bytes a row (a file in another charset: also its text).
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/import/ForeignContact.h"
#include "host/import/TableCells.h"
#include "host/import/TableHeadings.h"

namespace host::foreign {

class TableReader {
public:
    using Visit = std::function<void(ForeignContact &&)>;
    using Tell = std::function<void(std::int64_t line, const std::string &text)>;

    TableReader(std::string_view bytes, std::string file, const Tell &tell);

    void read(const Visit &visit);
    [[nodiscard]] const std::vector<Column> &columns() const { return columns_; }
    // Rows that have a text in the column; of the last read().
    [[nodiscard]] const std::vector<std::int64_t> &filled() const { return filled_; }
    [[nodiscard]] std::int64_t headingLine() const { return headingLine_; }

private:
    struct Row;   // what of a row waits for its other columns
    [[nodiscard]] std::string text(std::string_view cell) const;
    void takeHeadings();
    void takeCell(Row &row, std::size_t index, std::string_view cell);
    static void setOnce(Row &row, const Column &column, std::string &field, const std::string &value);
    void takeText(Row &row, const Column &column, std::string value);
    void takeAlone(Row &row, const Column &column, const std::string &value);
    static void addAddress(ForeignContact &contact, PostalAddress address, const std::string &formatted);
    static void addValues(ForeignContact &contact, Column::Kind kind, const std::string &label, const std::string &values, const std::string &services);
    void finish(Row &row);

    std::string_view bytes_;
    std::string whole_;   // a file in another charset, as UTF-8
    std::string file_;
    char separator_ = ',';
    bool isOwn_ = false;
    std::int64_t headingLine_ = 0;
    std::vector<Column> columns_;
    std::vector<std::size_t> groupOf_;   // of each column: the number of its group among all
    std::vector<std::int64_t> filled_;
};

}  // namespace host::foreign
