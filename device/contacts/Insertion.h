// An INSERT into a table of any version: columns that it lacks are passed over, columns that must not be empty and have
// no default are filled.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "device/sqlite/Database.h"

namespace device::contacts {

class Insertion {
public:
    Insertion() = default;
    Insertion(sqlite::Database &database, const sqlite::Table &table, const std::vector<std::string> &columns,
              const char *verb = "INSERT INTO ");

    explicit operator bool() const { return static_cast<bool>(statement_); }
    // `column` counts the names given at the making, from 0.
    template <class T> Insertion &bind(std::size_t column, const T &value) {
        if (parameters_[column])
            statement_.bind(parameters_[column], value);
        return *this;
    }
    Insertion &bindNull(std::size_t column);
    Insertion &bindBytes(std::size_t column, std::string_view bytes);
    void run();

private:
    struct Filler {
        int parameter;
        bool isGuid;
    };
    sqlite::Statement statement_;
    std::vector<int> parameters_;   // 0 where the table lacks the column
    std::vector<Filler> fillers_;
};

}  // namespace device::contacts
