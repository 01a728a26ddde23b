// One connection to one SQLite file that may come from a stranger's device.
//
// Care     the schema is not trusted, a statement that never ends is broken off, unknown functions and collations of
//          triggers and defaults are stood in for, so that real triggers run.
// Errors   sqlite::Error with the file and SQLite's message.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/sqlite/Error.h"
#include "device/sqlite/Statement.h"

namespace device::sqlite {

enum class Access {
    readOnly,
    immutable,   // nobody changes the file meanwhile: no locks, no side files; a -wal is not looked at
    readWrite,
    create,      // readWrite, made where it is missing
};

// The columns of one table, looked up by name without regard to case; none where the table is missing or no real table.
class Table {
public:
    struct Column {
        std::string name;   // lower case
        bool needsValue;    // NOT NULL without a default
    };
    std::string name;       // with its schema, ready for SQL
    std::vector<Column> columns;

    [[nodiscard]] bool exists() const { return !columns.empty(); }
    [[nodiscard]] const Column *column(std::string_view name) const;
    [[nodiscard]] bool has(std::string_view name) const { return column(name) != nullptr; }
    // The column's name, or NULL where it is missing: a term for a SELECT.
    [[nodiscard]] std::string term(std::string_view name) const;
};

class Database {
public:
    static constexpr int kBusyMilliseconds = 1000;

    Database(const std::filesystem::path &path, Access access);
    // A private copy in memory of the bytes of a database file.
    [[nodiscard]] static Database fromBytes(std::string_view bytes);
    Database(Database &&) noexcept;
    Database &operator=(Database &&) noexcept;
    ~Database();

    // Puts another file beside the first, under a schema name. Throws where it cannot be opened.
    void attach(const std::filesystem::path &path, std::string_view schema, Access access);

    void exec(const std::string &sql);
    [[nodiscard]] Statement prepare(std::string_view sql);
    // `schema` "main" or an attached one.
    [[nodiscard]] Table table(std::string_view name, std::string_view schema = "main");
    [[nodiscard]] std::int64_t lastInsertRowid() const;
    // Rows that the last INSERT, UPDATE or DELETE touched itself, triggers apart.
    [[nodiscard]] std::int64_t changes() const;
    // False where an error has already rolled everything back.
    [[nodiscard]] bool inTransaction() const;
    [[nodiscard]] const std::string &file() const { return *file_; }
    // Anything that has to live as long as the connection, such as the folder of a private copy.
    void keep(std::shared_ptr<void> companion) { companions_.push_back(std::move(companion)); }

    // A value of no rows gives 0.
    [[nodiscard]] std::int64_t integer(std::string_view sql);

private:
    explicit Database(std::string file);
    void open(const std::string &name, int flags);
    void harden();
    bool standIn(const std::string &message);

    // Declared before the handle's close: removed after it.
    std::vector<std::shared_ptr<void>> companions_;
    std::unique_ptr<const std::string> file_;   // at a fixed place: statements point to it
    std::unique_ptr<std::int64_t> steps_;       // what the running statement has left
    sqlite3 *handle_ = nullptr;
    bool hasTriggers_ = true;
};

// A transaction that is rolled back unless it was committed.
class Transaction {
public:
    explicit Transaction(Database &database);
    Transaction(const Transaction &) = delete;
    ~Transaction();
    void commit();

private:
    Database &database_;
    bool open_ = true;
};

// A step inside a transaction that is undone unless it was kept.
class Savepoint {
public:
    explicit Savepoint(Database &database);
    Savepoint(const Savepoint &) = delete;
    ~Savepoint();
    void keep();

private:
    Database &database_;
    bool open_ = true;
};

}  // namespace device::sqlite
