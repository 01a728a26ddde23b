#include "tools/Includes.h"

#include <set>

#include "tools/Source.h"

namespace tools {

namespace {

constexpr int kNoFloor = 0;

struct FloorOfFolder {
    std::string_view folder;
    int floor;
};
constexpr FloorOfFolder kFloors[] = {   // first hit wins: contracts/ lies inside the plug-in's folder
    {"toolkit/", 1}, {"HNManagerPlugin/contracts/", 2}, {"HNManagerPlugin/", 3}, {"device/", 4}, {"host/", 5},
};

int floorOf(std::string_view path) {
    for (const FloorOfFolder &row : kFloors)
        if (path.starts_with(row.folder))
            return row.floor;
    return kNoFloor;
}

bool isPluginHidden(int from, int to) { return from > 3 && to == 3; }

// What the categories share; a category is built on it, so the way back is up.
constexpr std::string_view kSharedByCategories[] = {
    "HNManagerPlugin/Classes/ViewManager/",
    "HNManagerPlugin/Classes/ViewModel/",
    "HNManagerPlugin/Classes/ModelEntify/",
    "HNManagerPlugin/Classes/PublicProgressWindow/",
    "HNManagerPlugin/Classes/SubItemViewController/",
    "HNManagerPlugin/HNCustomMethod.",
};

bool isSharedByCategories(std::string_view path) {
    for (const std::string_view prefix : kSharedByCategories)
        if (path.starts_with(prefix))
            return true;
    return false;
}

// "SubViews/Contacts" for a file of that category, "cli" for one of host/cli, "" elsewhere.
std::string categoryOf(std::string_view path) {
    for (const std::string_view parent : {"HNManagerPlugin/Classes/SubViews/", "host/"})
        if (path.starts_with(parent)) {
            const std::size_t slash = path.find('/', parent.size());
            return std::string(slash == std::string_view::npos ? "" : path.substr(0, slash));
        }
    return "";
}

bool isSideways(const std::string &file, const std::string &path) {
    const std::string from = categoryOf(file), to = categoryOf(path);
    // A program's folder may see what both programs need; of the import its front door alone.
    const bool isShared = to == "host/services" || path == "host/import/Handover.h";
    return !from.empty() && !to.empty() && from != to && !isShared;
}

const std::set<std::string_view> &systemHeaders() {
    static const std::set<std::string_view> names = {
        // C++20
        "algorithm", "any", "array", "atomic", "barrier", "bit", "bitset", "charconv", "chrono", "codecvt", "compare",
        "complex", "concepts", "condition_variable", "coroutine", "deque", "exception", "execution", "filesystem",
        "format", "forward_list", "fstream", "functional", "future", "initializer_list", "iomanip", "ios", "iosfwd",
        "iostream", "istream", "iterator", "latch", "limits", "list", "locale", "map", "memory", "memory_resource",
        "mutex", "new", "numbers", "numeric", "optional", "ostream", "queue", "random", "ranges", "ratio",
        "scoped_allocator", "semaphore", "set", "shared_mutex", "source_location", "span", "sstream", "stack",
        "stdexcept", "stop_token", "streambuf", "string", "string_view", "strstream", "syncstream", "system_error",
        "thread", "tuple", "type_traits", "typeindex", "typeinfo", "unordered_map", "unordered_set", "utility",
        "valarray", "variant", "vector", "version", "cassert", "cctype", "cerrno", "cfenv", "cfloat", "cinttypes",
        "climits", "clocale", "cmath", "csetjmp", "csignal", "cstdarg", "cstddef", "cstdint", "cstdio", "cstdlib",
        "cstring", "ctime", "cuchar", "cwchar", "cwctype",
        // C and POSIX
        "aio.h", "arpa/inet.h", "assert.h", "complex.h", "cpio.h", "ctype.h", "dirent.h", "dlfcn.h", "errno.h",
        "fcntl.h", "fenv.h", "float.h", "fmtmsg.h", "fnmatch.h", "ftw.h", "glob.h", "grp.h", "iconv.h", "inttypes.h",
        "iso646.h", "langinfo.h", "libgen.h", "limits.h", "locale.h", "math.h", "monetary.h", "mqueue.h", "ndbm.h",
        "net/if.h", "netdb.h", "netinet/in.h", "netinet/tcp.h", "nl_types.h", "poll.h", "pthread.h", "pwd.h",
        "sched.h", "search.h", "semaphore.h", "setjmp.h", "signal.h", "spawn.h", "stdarg.h", "stdbool.h", "stddef.h",
        "stdint.h", "stdio.h", "stdlib.h", "string.h", "strings.h", "sys/ipc.h", "sys/mman.h", "sys/msg.h",
        "sys/resource.h", "sys/select.h", "sys/sem.h", "sys/shm.h", "sys/socket.h", "sys/stat.h", "sys/statvfs.h",
        "sys/time.h", "sys/times.h", "sys/types.h", "sys/uio.h", "sys/un.h", "sys/utsname.h", "sys/wait.h",
        "syslog.h", "tar.h", "termios.h", "tgmath.h", "time.h", "unistd.h", "utime.h", "utmpx.h", "wchar.h",
        "wctype.h", "wordexp.h",
    };
    return names;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

// "" unless the line is an include with a closed name.
bool readInclude(std::string_view line, Include &include) {
    line = trimmed(line);
    if (!line.starts_with('#'))
        return false;
    line = trimmed(line.substr(1));
    if (!line.starts_with("include"))
        return false;
    line = trimmed(line.substr(7));
    if (line.empty() || (line[0] != '"' && line[0] != '<'))
        return false;
    include.angled = line[0] == '<';
    const std::size_t end = line.find(include.angled ? '>' : '"', 1);
    if (end == std::string_view::npos)
        return false;
    include.path = line.substr(1, end - 1);
    return true;
}

std::string faultOfOwn(const std::string &file, const std::string &path) {
    const int from = floorOf(file), to = floorOf(path);
    if (from == kNoFloor)
        return "";
    if (to == kNoFloor)
        return "lies on no floor";
    if (to > from)
        return "points up, from floor " + std::to_string(from) + " to floor " + std::to_string(to);
    if (isPluginHidden(from, to))
        return "reaches into the plug-in; only its contracts may be seen from here";
    if (isSharedByCategories(file) && path.starts_with("HNManagerPlugin/Classes/SubViews/"))
        return "points up, from what categories share into a category";
    if (isSideways(file, path))
        return "points sideways, from " + categoryOf(file) + " into " + categoryOf(path);
    return "";
}

} // namespace

std::vector<Include> includesOf(std::string_view source) {
    const std::string code = withoutComments(source);
    std::vector<Include> result;
    int line = 1;
    for (std::size_t at = 0; at < code.size(); ++line) {
        const std::size_t end = std::min(code.find('\n', at), code.size());
        Include include;
        include.line = line;
        if (readInclude(std::string_view(code).substr(at, end - at), include))
            result.push_back(include);
        at = end + 1;
    }
    return result;
}

std::string includeFault(const std::string &file, const Include &include,
                         const std::function<bool(const std::string &)> &exists) {
    if (exists(include.path))
        return include.angled ? "is ours: write it in double quotes" : faultOfOwn(file, include.path);
    const int from = floorOf(file);
    if (from != kNoFloor && !include.angled && !include.path.ends_with(".moc"))
        return "is no path from the repository's root";
    if (from >= 1 && from <= 3 && !systemHeaders().contains(include.path))
        return "is neither standard C++ nor POSIX";
    return "";
}

} // namespace tools
