// Any bytes as the Manifest.db of a backup folder: it is refused, or read without a crash, and no path leads out of it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "device/BackupFolder.h"
#include "device/messages/MessageSchema.h"

using namespace device;

namespace fs = std::filesystem;

namespace {

const fs::path &folder() {
    static const fs::path path = [] {
        const fs::path memory = "/dev/shm";
        std::string pattern = ((fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "fuzz-manifest-XXXXXX").string();
        return fs::canonical(mkdtemp(pattern.data()));
    }();
    return path;
}

void put(const fs::path &file, std::string_view bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void walk(const BackupFolder &backup, const DevicePath &top) {
    for (const FileEntry &entry : backup.list(top)) {
        const DevicePath path{top.domain, top.path.empty() ? entry.name : top.path + "/" + entry.name};
        if (entry.name.find('/') != std::string::npos || !FileTree::staysInside(path))
            std::abort();
        if (const auto place = backup.find(path); place && !place->string().starts_with(folder().string() + "/"))
            std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const bool isReady = (put(folder() / "3d" / BackupFolder::fileID(messages::kMessages), "sms"), true);
    (void)isReady;
    put(folder() / "Manifest.db", {reinterpret_cast<const char *>(data), size});
    try {
        const BackupFolder backup(folder());
        for (const std::string &domain : backup.domains())
            walk(backup, {domain, ""});
        walk(backup, {"HomeDomain", "Library/SMS"});
        (void)backup.find(messages::kMessages);
        (void)backup.info();
    } catch (const std::exception &) {
    }
    return 0;
}
