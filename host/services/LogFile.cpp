#include "host/services/LogFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

#include "host/services/Folders.h"
#include "toolkit/services/NSLog.h"

namespace host {

namespace fs = std::filesystem;

LogFile::~LogFile() {
    if (descriptor_ >= 0)
        close(descriptor_);
}

void LogFile::open() {
    isOpened_ = true;
    try {
        makePrivate(path_.parent_path());
    } catch (const fs::filesystem_error &) {
        return;
    }
    std::error_code error;
    if (fs::file_size(path_, error) > kMaxBytes && !error)
        fs::rename(path_, path_.string() + ".old", error);
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, S_IRUSR | S_IWUSR);
}

void LogFile::write(const NSString &line) {
    char stamp[32];
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::string text(stamp, std::strftime(stamp, sizeof stamp, "%F %T ", &utc));
    text += line.view();
    for (char &c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f')
            c = '?';
    text += '\n';

    const std::scoped_lock lock(mutex_);
    if (!isOpened_)
        open();
    if (descriptor_ >= 0 && ::write(descriptor_, text.data(), text.size()) < 0) {
        close(descriptor_);
        descriptor_ = -1;
    }
}

void LogFile::install(const std::shared_ptr<LogFile> &file) {
    setLogSink([file](const NSString &line) { file->write(line); });
}

}  // namespace host
