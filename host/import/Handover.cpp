#include "host/import/Handover.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/import/CardDialect.h"
#include "host/import/Rewriting.h"
#include "host/import/TableDialect.h"
#include "host/services/Folders.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace fs = std::filesystem;

namespace {

constexpr off_t kMostBytes = off_t{1} << 30;

[[noreturn]] void fail(const fs::path &path) { throw std::system_error(errno, std::generic_category(), path.string()); }

class Descriptor {
public:
    Descriptor(const fs::path &path, int flags) : number_(::open(path.c_str(), flags | O_CLOEXEC, 0600)) {
        if (number_ < 0)
            fail(path);
    }
    Descriptor(const Descriptor &) = delete;
    ~Descriptor() { ::close(number_); }
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

std::string wholeFile(const fs::path &path) {
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);   // a FIFO must not hold us up
    struct stat about {};
    if (::fstat(file.number(), &about) != 0)
        fail(path);
    if (about.st_size > kMostBytes)
        throw std::system_error(std::make_error_code(std::errc::file_too_large), path.string());
    if (!S_ISREG(about.st_mode))
        throw std::system_error(std::make_error_code(std::errc::invalid_argument), path.string());
    std::string bytes(static_cast<std::size_t>(about.st_size), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got = ::read(file.number(), bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            fail(path);
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

void writeAll(const Descriptor &file, std::string_view bytes, const fs::path &path) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(file.number(), bytes.data(), bytes.size());
        if (put < 0 && errno != EINTR)
            fail(path);
        bytes.remove_prefix(put < 0 ? 0 : static_cast<std::size_t>(put));
    }
}

// A folder of its own for each file, so that the file can keep its name.
fs::path privateFolder(const fs::path &scratch) {
    makePrivate(scratch / "import");
    std::string pattern = (scratch / "import" / "XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        fail(pattern);
    return pattern;
}

bool isLeftAlone(FileKind kind, std::string_view bytes) { return kind == FileKind::cards ? isCardDialect(bytes) : isTableDialect(bytes); }

}  // namespace

Handover::Handover(const fs::path &file, FileKind kind, const fs::path &scratch, const Tell &tell) : path_(file) {
    const std::string bytes = wholeFile(file);
    const bool hasOwnName = NSString(file.string()).pathExtension().isEqualIgnoringCase(kind == FileKind::cards ? "vcf" : "csv");
    isRewritten_ = !isLeftAlone(kind, bytes);
    if (!isRewritten_ && hasOwnName)
        return;
    folder_ = privateFolder(scratch);
    const fs::path &folder = folder_;
    if (!isRewritten_) {   // the plug-in knows its readers by the extension
        path_ = folder / (file.stem().string() + ".vcf");
        fs::create_symlink(fs::absolute(file), path_);
        return;
    }
    try {
        const fs::path raw = folder / "file";
        Rewritten result;
        {
            const Descriptor to(raw, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
            const auto write = [&](std::string_view piece) { writeAll(to, piece, raw); };
            result = (kind == FileKind::cards ? rewriteCards : rewriteTable)(bytes, file.string(), write, tell);
        }
        contacts_ = result.contacts;
        path_ = folder / (file.stem().string() + (result.isTable ? ".csv" : ".vcf"));
        fs::rename(raw, path_);
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        throw;
    }
}

Handover::~Handover() {
    std::error_code ignored;
    if (!folder_.empty())
        fs::remove_all(folder_, ignored);
}

}  // namespace host::foreign
