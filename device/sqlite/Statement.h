// A prepared statement. Columns and parameters: columns count from 0, parameters from 1, as in SQLite.
// Errors   every failure throws sqlite::Error. A statement whose step failed may be reset and used again.
// Threads  those of its Database: one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "toolkit/NSString.h"

struct sqlite3;
struct sqlite3_stmt;

namespace device::sqlite {

class Statement {
public:
    Statement() = default;
    Statement(sqlite3_stmt *statement, const std::string *file) : statement_(statement), file_(file) {}
    Statement(Statement &&other) noexcept;
    Statement &operator=(Statement &&other) noexcept;
    ~Statement();

    explicit operator bool() const { return statement_ != nullptr; }

    // Each gives the statement back, so that binds can be written in a row. Texts and bytes are copied.
    Statement &bindNull(int parameter);
    Statement &bind(int parameter, std::int64_t value);
    Statement &bind(int parameter, std::string_view text);
    Statement &bind(int parameter, const char *text) { return bind(parameter, std::string_view(text)); }
    Statement &bind(int parameter, const std::string &text) { return bind(parameter, std::string_view(text)); }
    // An absent text is bound as NULL.
    Statement &bind(int parameter, const NSString &text);
    Statement &bindBytes(int parameter, std::string_view bytes);

    // True while there is a row.
    bool step();
    // Steps to the end, then makes it ready for the next use.
    void run();
    void reset();

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    // As stored; valid until the next step.
    [[nodiscard]] std::string_view bytes(int column) const;
    [[nodiscard]] std::string_view rawText(int column) const;
    // Valid UTF-8: a bad byte becomes U+FFFD, a NUL is dropped; NULL gives the absent text.
    [[nodiscard]] NSString text(int column) const;

private:
    void check(int code) const;

    sqlite3_stmt *statement_ = nullptr;
    const std::string *file_ = nullptr;   // the Database's, which lives longer
};

}  // namespace device::sqlite
