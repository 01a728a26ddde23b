#include "device/contacts/Insertion.h"

#include <algorithm>

#include "device/sqlite/Functions.h"

namespace device::contacts {

Insertion::Insertion(sqlite::Database &database, const sqlite::Table &table, const std::vector<std::string> &columns, const char *verb) {
    if (!table.exists())
        return;
    std::string names, marks;
    int count = 0;
    const auto take = [&](const std::string &name) {
        names += (count ? ", " : "") + name;
        marks += count ? ", ?" : "?";
        return ++count;
    };
    sqlite::Table rest = table;
    for (const std::string &name : columns) {
        parameters_.push_back(table.has(name) ? take(name) : 0);
        if (const auto *column = rest.column(name))
            rest.columns.erase(rest.columns.begin() + (column - rest.columns.data()));
    }
    for (const sqlite::Table::Column &column : rest.columns)
        if (column.needsValue)
            fillers_.push_back({take("\"" + column.name + "\""), column.name == "guid"});
    if (count)
        statement_ = database.prepare(verb + table.name + " (" + names + ") VALUES (" + marks + ")");
}

Insertion &Insertion::bindNull(std::size_t column) {
    if (parameters_[column])
        statement_.bindNull(parameters_[column]);
    return *this;
}

Insertion &Insertion::bindBytes(std::size_t column, std::string_view bytes) {
    if (parameters_[column])
        statement_.bindBytes(parameters_[column], bytes);
    return *this;
}

void Insertion::run() {
    for (const Filler &filler : fillers_)
        statement_.bind(filler.parameter, filler.isGuid ? sqlite::newGuid() : std::string());
    statement_.run();
}

}  // namespace device::contacts
