#include "device/Journal.h"

#include <string>

#include "device/AccessError.h"
#include "device/File.h"
#include "toolkit/NSString.h"

namespace device {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMagic = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
constexpr std::size_t kTailBytes = 16;   // length of the name, its checksum, the magic

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4))
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

// The name of the file that ties several journals to one commit; empty where there is none.
std::string superJournalName(const fs::path &journal) {
    constexpr std::size_t kMaxNameBytes = 8192;
    const std::string bytes = File::openForReading(journal).readTail(kMaxNameBytes + kTailBytes);
    if (bytes.size() < kTailBytes || !bytes.ends_with(kMagic))
        return {};
    const std::size_t length = bigEndian(std::string_view(bytes).substr(bytes.size() - kTailBytes));
    if (length > bytes.size() - kTailBytes)
        return "(a name without end)";
    return bytes.substr(bytes.size() - kTailBytes - length, length);
}

}  // namespace

fs::path beside(const fs::path &database, const char *suffix) { return database.string() + suffix; }

bool hasBytes(const fs::path &file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return !error && size > 0;
}

bool usesLog(const fs::path &database) {
    constexpr std::size_t kVersionAt = 18;   // 1 a rollback journal, 2 a write-ahead log
    const std::string header = File::openForReading(database).read(kVersionAt + 2);
    return header.size() == kVersionAt + 2 && (header[kVersionAt] == 2 || header[kVersionAt + 1] == 2);
}

void checkCompanions(const fs::path &database) {
    for (const char *suffix : {"-journal", "-wal", "-shm"}) {
        std::error_code missing;
        const fs::file_status status = fs::symlink_status(beside(database, suffix), missing);
        if (fs::exists(status) && !fs::is_regular_file(status))
            throw AccessError(AccessError::Kind::damaged, beside(database, suffix).string(), "not a plain file");
    }
    const fs::path journal = beside(database, "-journal");
    if (!hasBytes(journal))
        return;
    const std::string name = superJournalName(journal);
    if (!name.empty() && fs::path(name).parent_path() != database.parent_path())
        throw AccessError(AccessError::Kind::damaged, journal.string(),
                          "an unfinished change that belongs to another place (" + unicode::sanitized(name) +
                              "); put the folder back where it was and open it there once");
}

}  // namespace device
