// Ways in which a device's writer ends badly: killed, out of disk, not allowed.
#pragma once

#include <cstdint>
#include <filesystem>

namespace testdevice {

// From here on the n-th call of SQLite to the disk that changes something ends the process with SIGKILL. In a child only.
void dieAtCall(int call);

// Files cannot grow beyond so many bytes. In a child only.
void limitFileSize(std::uint64_t bytes);

// Takes the permission to write from everything below the folder.
void forbidWriting(const std::filesystem::path &folder);
// False where the process stays one that no permission binds. In a child only.
[[nodiscard]] bool becomeNobody();

}  // namespace testdevice
