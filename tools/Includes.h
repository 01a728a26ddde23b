#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The rule of the house: an include points down, never up, never sideways into another category; floors 1 to 3 see of
// the outside only standard C++ and POSIX.
namespace tools {

struct Include {
    int line = 0;       // from 1
    bool angled = false;
    std::string path;   // as written
};

// The includes of a C++ source; those inside comments do not count.
std::vector<Include> includesOf(std::string_view source);

// Why `file` may not include `include`, or "" where it may. `file` is a path from the repository's root; `exists` tells
// whether such a path names a file. Tests, benches, fuzz targets and tools may include from every floor.
std::string includeFault(const std::string &file, const Include &include,
                         const std::function<bool(const std::string &)> &exists);

} // namespace tools
