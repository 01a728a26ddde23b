#include "device/sqlite/Functions.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstring>

namespace device::sqlite {

namespace {

constexpr int kHarmless = SQLITE_UTF8 | SQLITE_INNOCUOUS;   // else an untrusted schema may not call them

void giveGuid(sqlite3_context *context, int, sqlite3_value **) {
    const std::string guid = newGuid();
    sqlite3_result_text(context, guid.data(), static_cast<int>(guid.size()), SQLITE_TRANSIENT);
}

void giveNull(sqlite3_context *context, int, sqlite3_value **) { sqlite3_result_null(context); }

// Triggers ask whether a message has been read by now; a device that nobody holds has read nothing more.
void giveFirst(sqlite3_context *context, int count, sqlite3_value **values) {
    if (count > 0)
        sqlite3_result_value(context, values[0]);
}

struct Entry {
    const char *name;
    void (*call)(sqlite3_context *, int, sqlite3_value **);
};
constexpr Entry kFunctions[] = {
    {"ab_generate_guid", giveGuid},
    {"delete_attachment_path", giveNull},          // the files of a device image are removed by the store, not by SQL
    {"before_delete_attachment_path", giveNull},
    {"read", giveFirst},
};

}  // namespace

std::string newGuid() {
    std::array<unsigned char, 16> bytes;
    sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    std::string guid;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        char two[3];
        std::snprintf(two, sizeof two, "%02X", bytes[i]);
        guid += two;
        if (i == 3 || i == 5 || i == 7 || i == 9)
            guid += '-';
    }
    return guid;
}

void registerDeviceFunctions(sqlite3 *database) {
    for (const Entry &entry : kFunctions)
        sqlite3_create_function_v2(database, entry.name, -1, kHarmless, nullptr, entry.call, nullptr, nullptr, nullptr);
}

void registerStandIn(sqlite3 *database, const std::string &name) {
    const bool makesGuid = name.find("guid") != std::string::npos || name.find("uuid") != std::string::npos;
    sqlite3_create_function_v2(database, name.c_str(), -1, kHarmless, nullptr, makesGuid ? giveGuid : giveNull, nullptr, nullptr,
                               nullptr);
}

}  // namespace device::sqlite
