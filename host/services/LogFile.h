// The log: one line per event, with date and time in UTC. It never fails: what cannot be written is dropped.
//
// Size     above kMaxBytes at the start the old log becomes "<name>.old", in place of the one before.
// Lines    a control character in a text is written as "?", so that a record cannot forge a line. Threads: any.
#pragma once

#include <filesystem>
#include <memory>
#include <mutex>

#include "toolkit/NSString.h"

namespace host {

class LogFile {
public:
    static constexpr std::uintmax_t kMaxBytes = 4u << 20;

    // The file is made at the first line.
    explicit LogFile(std::filesystem::path path) : path_(std::move(path)) {}
    ~LogFile();
    LogFile(const LogFile &) = delete;

    void write(const NSString &line);
    // Everything that is logged goes to this file from now on.
    static void install(const std::shared_ptr<LogFile> &file);

private:
    void open();
    std::filesystem::path path_;
    std::mutex mutex_;
    int descriptor_ = -1;
    bool isOpened_ = false;
};

}  // namespace host
