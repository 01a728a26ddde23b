// A private folder (mode 0700) for copies of databases; it goes with everything in it when this object ends.
#pragma once

#include <filesystem>

namespace device {

class ScratchFolder {
public:
    // Throws AccessError where none can be made.
    ScratchFolder();
    // Below a folder that the caller names.
    explicit ScratchFolder(const std::filesystem::path &parent);
    ScratchFolder(const ScratchFolder &) = delete;
    ~ScratchFolder();

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }

    // Where the folders are made; the system's temporary folder until it is set. Set once, before the first device.
    static void setParent(std::filesystem::path parent);

private:
    std::filesystem::path path_;
};

}  // namespace device
