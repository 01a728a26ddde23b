#include "device/sqlite/Statement.h"

#include <sqlite3.h>

#include <cstring>
#include <utility>

#include "device/sqlite/Error.h"

namespace device::sqlite {

namespace {

// Most texts are plain ASCII without a NUL: those need no look at single characters.
bool isPlain(std::string_view text) {
    constexpr std::uint64_t kHigh = 0x8080808080808080u, kOnes = 0x0101010101010101u;
    std::size_t at = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + at, 8);
        if (((word | (word - kOnes)) & kHigh) != 0)
            return false;
    }
    for (; at < text.size(); ++at)
        if (static_cast<signed char>(text[at]) <= 0)
            return false;
    return true;
}

}  // namespace

Statement::Statement(Statement &&other) noexcept
    : statement_(std::exchange(other.statement_, nullptr)), file_(other.file_) {}

Statement &Statement::operator=(Statement &&other) noexcept {
    std::swap(statement_, other.statement_);
    std::swap(file_, other.file_);
    return *this;
}

Statement::~Statement() { sqlite3_finalize(statement_); }

void Statement::check(int code) const {
    if (code == SQLITE_OK)
        return;
    sqlite3 *database = sqlite3_db_handle(statement_);
    throw Error(*file_, sqlite3_extended_errcode(database), sqlite3_errmsg(database));
}

Statement &Statement::bindNull(int parameter) {
    check(sqlite3_bind_null(statement_, parameter));
    return *this;
}

Statement &Statement::bind(int parameter, std::int64_t value) {
    check(sqlite3_bind_int64(statement_, parameter, value));
    return *this;
}

Statement &Statement::bind(int parameter, std::string_view text) {
    const char *bytes = text.data() ? text.data() : "";   // a null pointer would be bound as NULL
    check(sqlite3_bind_text64(statement_, parameter, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement &Statement::bind(int parameter, const NSString &text) {
    return text.isNil() ? bindNull(parameter) : bind(parameter, text.view());
}

Statement &Statement::bindBytes(int parameter, std::string_view bytes) {
    check(sqlite3_bind_blob64(statement_, parameter, bytes.data() ? bytes.data() : "", bytes.size(), SQLITE_TRANSIENT));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    sqlite3 *database = sqlite3_db_handle(statement_);
    const Error error(*file_, sqlite3_extended_errcode(database), sqlite3_errmsg(database));
    sqlite3_reset(statement_);
    throw error;
}

void Statement::run() {
    while (step()) {
    }
    reset();
}

void Statement::reset() {
    sqlite3_reset(statement_);   // repeats the error of a step that has told it already
}

bool Statement::isNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(statement_, column); }

std::string_view Statement::bytes(int column) const {
    const void *data = sqlite3_column_blob(statement_, column);
    return {static_cast<const char *>(data), data ? static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)) : 0};
}

std::string_view Statement::rawText(int column) const {
    const unsigned char *text = sqlite3_column_text(statement_, column);
    if (!text)
        return {};
    return {reinterpret_cast<const char *>(text), static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

NSString Statement::text(int column) const {
    const std::string_view raw = rawText(column);
    if (!raw.data())
        return {};
    return isPlain(raw) ? NSString(raw) : NSString(unicode::sanitized(raw));
}

}  // namespace device::sqlite
