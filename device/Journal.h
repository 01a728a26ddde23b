// What a killed writer left beside a database.
#pragma once

#include <filesystem>

namespace device {

[[nodiscard]] std::filesystem::path beside(const std::filesystem::path &database, const char *suffix);
[[nodiscard]] bool hasBytes(const std::filesystem::path &file);
// True where the header says that the database keeps a write-ahead log.
[[nodiscard]] bool usesLog(const std::filesystem::path &database);

// Rolling back reads the name of a second file from the journal, and may remove that file. Throws AccessError where it
// lies anywhere but beside the database (an image that was moved while a change was unfinished, or a forged journal),
// or where a companion of the database is no plain file.
void checkCompanions(const std::filesystem::path &database);

}  // namespace device
