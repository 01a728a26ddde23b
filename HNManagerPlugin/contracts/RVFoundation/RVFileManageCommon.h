// Sums of file sizes, and the room on the computer. Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "toolkit/NSString.h"

class RVFileManageCommon {
public:
    // Bytes of all files together; one that is missing counts as 0.
    [[nodiscard]] static std::int64_t getFileArraySize(const std::vector<NSString> &paths);
};

class RVSystemInfoManager {
public:
    // Bytes free on the computer's disk (of the user's home), despite the name. A failed query gives 0.
    [[nodiscard]] static std::int64_t availableMemory();
    // Replaces the query; empty goes back to the disk's own answer.
    static void setAvailableMemoryQuery(std::function<std::int64_t()> query);
};
