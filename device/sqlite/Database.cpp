#include "device/sqlite/Database.h"

#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

#include "device/sqlite/Functions.h"

namespace device::sqlite {

namespace {

constexpr int kStepsPerCall = 100'000;
constexpr std::int64_t kMaxSteps = 20'000'000'000;   // minutes of work; only a schema made to hang needs more
constexpr int kMaxValueBytes = 256 << 20;

std::string lowered(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

std::string uriOf(const std::filesystem::path &path, std::string_view query) {
    std::string uri = "file:";
    for (const char c : path.string()) {
        if (c == '%' || c == '?' || c == '#') {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
            uri += code;
        } else {
            uri += c;
        }
    }
    return uri += query;
}

// The device's own order of names is not to be had here; bytes are an order as well.
void needCollation(void *, sqlite3 *database, int, const char *name) {
    sqlite3_create_collation_v2(
        database, name, SQLITE_UTF8, nullptr,
        [](void *, int leftSize, const void *left, int rightSize, const void *right) {
            const int order = std::memcmp(left, right, static_cast<std::size_t>(std::min(leftSize, rightSize)));
            return order ? order : leftSize - rightSize;
        },
        nullptr);
}

int stepBudget(void *steps) {
    auto &left = *static_cast<std::int64_t *>(steps);
    left -= kStepsPerCall;
    return left < 0;
}

constexpr std::string_view query(Access access) {
    switch (access) {
    case Access::readOnly: return "?mode=ro";
    case Access::immutable: return "?mode=ro&immutable=1";
    case Access::readWrite: return "?mode=rw";
    case Access::create: return "?mode=rwc";
    }
    return "";
}

}  // namespace

const Table::Column *Table::column(std::string_view name) const {
    const std::string wanted = lowered(name);
    const auto found = std::ranges::find(columns, wanted, &Column::name);
    return found == columns.end() ? nullptr : &*found;
}

std::string Table::term(std::string_view name) const { return has(name) ? std::string(name) : "NULL"; }

Database::Database(std::string file)
    : file_(std::make_unique<const std::string>(std::move(file))), steps_(std::make_unique<std::int64_t>(kMaxSteps)) {}

Database::Database(const std::filesystem::path &path, Access access) : Database(path.string()) {
    const bool writes = access == Access::readWrite || access == Access::create;
    open(uriOf(path, query(access)), (writes ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_URI);
}

void Database::open(const std::string &name, int flags) {
    const int code = sqlite3_open_v2(name.c_str(), &handle_, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        const Error error(file(), handle_ ? sqlite3_extended_errcode(handle_) : code,
                          handle_ ? sqlite3_errmsg(handle_) : "out of memory");
        sqlite3_close_v2(std::exchange(handle_, nullptr));
        throw error;
    }
    try {
        harden();
    } catch (...) {
        sqlite3_close_v2(std::exchange(handle_, nullptr));
        throw;
    }
}

void Database::harden() {
    sqlite3_extended_result_codes(handle_, 1);
    sqlite3_busy_timeout(handle_, kBusyMilliseconds);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, kMaxValueBytes);
    sqlite3_progress_handler(handle_, kStepsPerCall, stepBudget, steps_.get());
    sqlite3_collation_needed(handle_, nullptr, needCollation);
    registerDeviceFunctions(handle_);
    exec("PRAGMA cell_size_check = ON");
}

Database Database::fromBytes(std::string_view bytes) {
    Database database{std::string(":memory:")};
    database.open(":memory:", SQLITE_OPEN_READWRITE);
    auto *copy = static_cast<unsigned char *>(sqlite3_malloc64(bytes.size() ? bytes.size() : 1));
    if (!copy)
        throw Error(database.file(), SQLITE_NOMEM, "out of memory");
    std::memcpy(copy, bytes.data(), bytes.size());
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    const int code = sqlite3_deserialize(database.handle_, "main", copy, size, size,
                                         SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
    if (code != SQLITE_OK)
        throw Error(database.file(), code, sqlite3_errmsg(database.handle_));
    return database;
}

Database::Database(Database &&other) noexcept
    : companions_(std::move(other.companions_)), file_(std::move(other.file_)), steps_(std::move(other.steps_)),
      handle_(std::exchange(other.handle_, nullptr)), hasTriggers_(other.hasTriggers_) {}

Database &Database::operator=(Database &&other) noexcept {
    std::swap(companions_, other.companions_);
    std::swap(file_, other.file_);
    std::swap(steps_, other.steps_);
    std::swap(handle_, other.handle_);
    std::swap(hasTriggers_, other.hasTriggers_);
    return *this;
}

Database::~Database() { sqlite3_close_v2(handle_); }

void Database::attach(const std::filesystem::path &path, std::string_view schema, Access access) {
    prepare("ATTACH ? AS " + std::string(schema)).bind(1, uriOf(path, query(access))).run();
}

void Database::exec(const std::string &sql) {
    std::string_view rest = sql;
    *steps_ = kMaxSteps;
    while (!rest.empty()) {
        sqlite3_stmt *raw = nullptr;
        const char *tail = nullptr;
        int code = sqlite3_prepare_v2(handle_, rest.data(), static_cast<int>(rest.size()), &raw, &tail);
        if (code != SQLITE_OK && standIn(sqlite3_errmsg(handle_)))
            continue;
        if (code != SQLITE_OK)
            throw Error(file(), sqlite3_extended_errcode(handle_), sqlite3_errmsg(handle_));
        rest.remove_prefix(static_cast<std::size_t>(tail - rest.data()));
        if (raw)
            Statement(raw, file_.get()).run();
    }
}

Statement Database::prepare(std::string_view sql) {
    *steps_ = kMaxSteps;
    for (;;) {
        sqlite3_stmt *raw = nullptr;
        const int code = sqlite3_prepare_v2(handle_, sql.data(), static_cast<int>(sql.size()), &raw, nullptr);
        if (code == SQLITE_OK)
            return {raw, file_.get()};
        if (!standIn(sqlite3_errmsg(handle_)))
            throw Error(file(), sqlite3_extended_errcode(handle_), sqlite3_errmsg(handle_));
    }
}

// True where the statement is worth another try. What a trigger calls is looked up when a statement is prepared.
bool Database::standIn(const std::string &message) {
    constexpr std::string_view kNoFunction = "no such function: ";
    if (message.starts_with(kNoFunction)) {
        registerStandIn(handle_, message.substr(kNoFunction.size()));
        return true;
    }
    const bool needsDevice = message.starts_with("no such module") || message.starts_with("unknown tokenizer");
    if (!needsDevice || !hasTriggers_)
        return false;
    hasTriggers_ = false;   // a search index that only the device can keep; it is rebuilt there
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    return true;
}

Table Database::table(std::string_view name, std::string_view schema) {
    Table table;
    table.name = std::string(schema) + "." + std::string(name);
    // A view or a virtual table under the name could do anything, a real table has a root page.
    Statement real = prepare("SELECT 1 FROM " + std::string(schema) +
                             ".sqlite_master WHERE type = 'table' AND rootpage > 0 AND lower(name) = lower(?)");
    if (!real.bind(1, name).step())
        return table;
    Statement columns = prepare("SELECT name, \"notnull\", dflt_value, pk FROM pragma_table_xinfo(?, ?) WHERE hidden = 0");
    columns.bind(1, name).bind(2, schema);
    while (columns.step())
        table.columns.push_back({lowered(columns.rawText(0)),
                                 columns.integer(1) != 0 && columns.isNull(2) && columns.integer(3) == 0});
    return table;
}

std::int64_t Database::lastInsertRowid() const { return sqlite3_last_insert_rowid(handle_); }
std::int64_t Database::changes() const { return sqlite3_changes64(handle_); }
bool Database::inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

std::int64_t Database::integer(std::string_view sql) {
    Statement statement = prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

Transaction::Transaction(Database &database) : database_(database) { database.exec("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
    if (!open_ || !database_.inTransaction())
        return;
    try {
        database_.exec("ROLLBACK");
    } catch (const Error &) {   // the connection's end rolls back as well
    }
}

void Transaction::commit() {
    database_.exec("COMMIT");
    open_ = false;
}

Savepoint::Savepoint(Database &database) : database_(database) { database.exec("SAVEPOINT item"); }

Savepoint::~Savepoint() {
    if (!open_ || !database_.inTransaction())
        return;
    try {
        database_.exec("ROLLBACK TO item; RELEASE item");
    } catch (const Error &) {   // the transaction around it ends the same way
    }
}

void Savepoint::keep() {
    database_.exec("RELEASE item");
    open_ = false;
}

}  // namespace device::sqlite
