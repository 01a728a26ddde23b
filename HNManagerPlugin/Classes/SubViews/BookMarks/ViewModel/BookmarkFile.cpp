#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNBookMarkEntity.h"

namespace bookmarks {

const char *const kFileHead =
    "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<HTML><META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; "
    "charset=UTF-8\"><Title>bookmark</Title><H1>bookmark</H1>";
const char *const kFileTail = "\n</HTML>";

namespace {

constexpr std::string_view kFolderEnd = "\n</DL><p>";

void appendFolderStart(std::string &html, const HNBookMarkEntity &folder) {
    html.append("\n<DT><H3 FOLDED>").append(folder.name.view()).append("</H3>\n<DL><p>");
}

void appendBookmark(std::string &html, const HNBookMarkEntity &bookmark) {
    html.append("\n<DT><A HREF=\"").append(bookmark.url.view()).append("\">").append(bookmark.name.view()).append("</A>");
}

}   // namespace

void appendNodes(std::string &html, const NSArray &nodes, std::int64_t &budget) {
    struct List {
        NSArray nodes;
        std::size_t next;
    };
    std::vector<List> open;
    open.push_back({nodes, 0});
    while (!open.empty()) {
        List &list = open.back();
        if (list.next == list.nodes.count() || budget == 0) {
            open.pop_back();
            if (!open.empty())
                html.append(kFolderEnd);
            continue;
        }
        const id &object = list.nodes[list.next++];
        const auto &node = static_cast<const HNBookMarkEntity &>(*object);
        if (!node.isFolder) {
            --budget;
            appendBookmark(html, node);
            continue;
        }
        appendFolderStart(html, node);
        open.push_back({node.children()->snapshot(), 0});
    }
}

// ---------------------------------------------------------------- the file

namespace {

class OpenFile {
public:
    explicit OpenFile(const NSString &path)
        : descriptor_(::open(path.UTF8String(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644)) {}
    OpenFile(const OpenFile &) = delete;
    ~OpenFile() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    // The place behind what stands there, or -1. Cutting there changes nothing; it is told to file systems that keep room ahead.
    off_t goToEnd() const {
        const off_t end = ::lseek(descriptor_, 0, SEEK_END);
        return end >= 0 && cutAt(end) ? end : -1;
    }
    bool cutAt(off_t end) const { return ::ftruncate(descriptor_, end) == 0; }
    bool write(std::string_view rest) const {
        while (!rest.empty()) {
            const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

private:
    int descriptor_;
};

}   // namespace

std::error_code appendToFile(const NSString &path, std::string_view text) {
    if (path.isEmpty())
        return std::make_error_code(std::errc::no_such_file_or_directory);
    const bool isNew = ::access(path.UTF8String(), F_OK) != 0;
    const OpenFile file(path);
    const off_t end = file.isOpen() ? file.goToEnd() : -1;
    if (end >= 0 && file.write(text))
        return {};
    const std::error_code why(errno != 0 ? errno : EIO, std::generic_category());
    if (end < 0)
        return why;
    file.cutAt(end);
    if (isNew)
        ::unlink(path.UTF8String());
    return why;
}

// ---------------------------------------------------------------- lines

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

bool standsAt(std::string_view text, std::size_t at, std::string_view mark) {
    return text.size() - at >= mark.size() &&
           std::equal(mark.begin(), mark.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                      [](char a, char b) { return upper(a) == upper(b); });
}

// The line that begins at `at`, which moves behind its end. Line feed to carriage return, U+0085, U+2028 and U+2029 end one.
std::string_view nextLine(std::string_view text, std::size_t &at) {
    const std::size_t start = at;
    while (at < text.size()) {
        const std::size_t end = at;
        const char32_t c = unicode::next(text, at);
        if ((c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029)
            return text.substr(start, end - start);
    }
    return text.substr(start);
}

// What stands between the first `before` and the last `after` behind it, in the first line that has both.
NSString between(const NSString &text, std::string_view before, std::string_view after) {
    for (std::size_t at = 0; at < text.sizeBytes();) {
        const std::string_view line = nextLine(text.view(), at);
        std::size_t start = 0;
        while (start < line.size() && !standsAt(line, start, before))
            ++start;
        if (start >= line.size())
            continue;
        start += before.size();
        for (std::size_t end = line.size(); end > start; --end)
            if (standsAt(line, end, after))
                return NSString(line.substr(start, end - start));
    }
    return {};
}

}   // namespace

NSString folderNameOfLine(const NSString &line) { return between(line, "<DT><H3 FOLDED>", "</H3>"); }
NSString urlOfLine(const NSString &line) { return between(line, "\"", "\""); }
NSString nameOfLine(const NSString &line) { return between(line, "\">", "</A>"); }

}   // namespace bookmarks
