// The functions that a device registers itself and that the triggers and defaults of its databases call.
#pragma once

#include <string>

struct sqlite3;

namespace device::sqlite {

// A new random UUID (version 4), upper case.
[[nodiscard]] std::string newGuid();

void registerDeviceFunctions(sqlite3 *database);
// A function of this name that does nothing: one that makes guids where its name says so, else one that gives NULL.
void registerStandIn(sqlite3 *database, const std::string &name);

}  // namespace device::sqlite
