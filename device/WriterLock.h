// The right to write one image, held for the length of one writing operation and given back when this object ends.
// It is an advisory lock on the image's file `.lock`, so that a second program, thread or nested call is refused.
#pragma once

#include <filesystem>

namespace device {

class WriterLock {
public:
    // Throws AccessError: locked where another writer is at work, readOnly where the folder cannot be written.
    explicit WriterLock(const std::filesystem::path &imageFolder);
    WriterLock(const WriterLock &) = delete;
    ~WriterLock();

private:
    int descriptor_ = -1;
};

}  // namespace device
