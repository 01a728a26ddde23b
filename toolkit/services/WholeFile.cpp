#include "toolkit/services/WholeFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iconv.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kPieceBytes = 256u << 10;

std::string reasonOf(int error) { return std::strerror(error); }

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&) = delete;
    ~Descriptor() { close(); }
    [[nodiscard]] int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    // False where the last bytes could not be stored.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

// Opened without waiting: a pipe that somebody put there must not hold the flow.
Descriptor openOrdinary(const std::string &path, struct stat &info, std::string &reason) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file || ::fstat(file.number(), &info) != 0)
        reason = path + ": " + reasonOf(errno);
    else if (!S_ISREG(info.st_mode))
        reason = path + ": no ordinary file";
    return file;
}

// The new file under a name of its own until it is whole.
class NewFile {
public:
    NewFile(std::string place, mode_t mode) : place_(std::move(place)), file_(open(mode)) {
        if (!file_)
            reason_ = place_ + ": " + reasonOf(errno);
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    ~NewFile() {
        if (isOpened_)
            ::unlink(temporary_.c_str());
    }

    [[nodiscard]] int number() const { return file_.number(); }
    [[nodiscard]] const std::string &reason() const { return reason_; }
    bool write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t done = ::write(file_.number(), bytes.data(), bytes.size());
            if (done < 0 && errno == EINTR)
                continue;
            if (done < 0)
                return fail(place_ + ": " + reasonOf(errno));
            bytes.remove_prefix(static_cast<std::size_t>(done));
        }
        return true;
    }
    bool fail(std::string reason) {
        reason_ = std::move(reason);
        return false;
    }
    // Puts it in place; the reason is empty then.
    std::string finish() {
        if (reason_.empty() && (!file_.close() || ::rename(temporary_.c_str(), place_.c_str()) != 0))
            reason_ = place_ + ": " + reasonOf(errno);
        isOpened_ = isOpened_ && !reason_.empty();
        return reason_;
    }

private:
    int open(mode_t mode) {
        static std::atomic<unsigned> number{0};
        const auto slash = place_.rfind('/');
        const std::string folder = slash == std::string::npos ? "" : place_.substr(0, slash + 1);
        // Not named after the file: that name may be as long as names can be.
        temporary_ = folder + ".new-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
        const int opened = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode & 0777);
        isOpened_ = opened >= 0;
        return opened;
    }

    std::string place_, temporary_, reason_;
    bool isOpened_ = false;
    Descriptor file_;
};

bool copyByPieces(int from, const std::string &name, NewFile &to) {
    std::vector<char> piece(kPieceBytes);
    while (true) {
        const ssize_t got = ::read(from, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return to.fail(name + ": " + reasonOf(errno));
        if (got == 0)
            return true;
        if (!to.write({piece.data(), static_cast<std::size_t>(got)}))
            return false;
    }
}

#ifdef __linux__
// True where the kernel copied all; false where the rest has to be copied by hand.
bool copyInKernel(int from, int to) {
    while (true) {   // a file system that can shares the blocks
        const ssize_t done = ::copy_file_range(from, nullptr, to, nullptr, std::size_t{1} << 30, 0);
        if (done == 0)
            return ::lseek(from, 0, SEEK_CUR) > 0;   // some file systems report 0 at once for what they cannot copy
        if (done < 0)
            return false;
    }
}
#else
bool copyInKernel(int, int) { return false; }
#endif

class Recoder {
public:
    Recoder(const char *fromCode, const char *toCode) : code_(::iconv_open(toCode, fromCode)) {}
    Recoder(const Recoder &) = delete;
    Recoder &operator=(const Recoder &) = delete;
    ~Recoder() {
        if (isOpen())
            ::iconv_close(code_);
    }
    [[nodiscard]] bool isOpen() const { return code_ != reinterpret_cast<iconv_t>(-1); }

    // Takes from the front of `in` what can be recoded; what is left is the beginning of a character.
    bool take(std::string_view &in, NewFile &out) {
        std::vector<char> room(kPieceBytes);
        while (true) {
            char *from = const_cast<char *>(in.data()), *to = room.data();
            std::size_t left = in.size(), space = room.size();
            const std::size_t result = in.empty() ? ::iconv(code_, nullptr, nullptr, &to, &space) : ::iconv(code_, &from, &left, &to, &space);
            const int error = errno;
            consumed_ += in.size() - left;
            in.remove_prefix(in.size() - left);
            if (!out.write({room.data(), room.size() - space}))
                return false;
            if (result != static_cast<std::size_t>(-1) || error == EINVAL)
                return true;
            if (error != E2BIG)
                return out.fail("a byte sequence that cannot be recoded, at byte " + std::to_string(consumed_));
        }
    }

private:
    iconv_t code_;
    std::size_t consumed_ = 0;
};

bool recodeAll(int from, const std::string &name, Recoder &recoder, NewFile &to) {
    std::vector<char> piece(kPieceBytes);
    std::size_t kept = 0;   // bytes of a character that the last piece cut
    while (true) {
        const ssize_t got = ::read(from, piece.data() + kept, piece.size() - kept);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return to.fail(name + ": " + reasonOf(errno));
        std::string_view in(piece.data(), kept + static_cast<std::size_t>(got));
        if (got == 0) {
            std::string_view nothing;
            return in.empty() ? recoder.take(nothing, to) : to.fail(name + ": ends within a character");
        }
        if (!recoder.take(in, to))
            return to.fail(to.reason().starts_with("a byte") ? name + ": " + to.reason() : to.reason());
        kept = in.size();
        std::memmove(piece.data(), in.data(), kept);
    }
}

}  // namespace

std::string WholeFile::copy(const std::string &from, const std::string &to) {
    struct stat info {}, there {};
    std::string reason;
    const Descriptor source = openOrdinary(from, info, reason);
    if (!reason.empty())
        return reason;
    if (::stat(to.c_str(), &there) == 0) {
        if (there.st_dev == info.st_dev && there.st_ino == info.st_ino)
            return from + " and " + to + " are the same file";
        if (S_ISDIR(there.st_mode))
            return to + ": is a folder";
    }
    NewFile target(to, info.st_mode);
    if (target.reason().empty() && info.st_size > 0 && copyInKernel(source.number(), target.number()))
        return target.finish();
    if (target.reason().empty())
        copyByPieces(source.number(), from, target);
    return target.finish();
}

std::string WholeFile::recode(const std::string &from, const std::string &to, const char *fromCode, const char *toCode) {
    struct stat info {};
    std::string reason;
    const Descriptor source = openOrdinary(from, info, reason);
    if (!reason.empty())
        return reason;
    Recoder recoder(fromCode, toCode);
    if (!recoder.isOpen())
        return std::string("this computer cannot recode to ") + toCode;
    NewFile target(to, 0666);
    if (target.reason().empty())
        recodeAll(source.number(), from, recoder, target);
    return target.finish();
}
