// Files that come into being whole: written beside their place and renamed when complete.
//
// Errors    an empty reason where all went well; else an English one for a person, and nothing stands at the place that did
//           not stand there before.
// Threads   any.
#pragma once

#include <string>

class WholeFile {
public:
    // Copies an ordinary file over `to`, links followed at `from` and replaced at `to`, as fast as the file system can.
    [[nodiscard]] static std::string copy(const std::string &from, const std::string &to);
    // Recodes an ordinary file, both names as iconv(3) knows them.
    [[nodiscard]] static std::string recode(const std::string &from, const std::string &to, const char *fromCode, const char *toCode);
};
