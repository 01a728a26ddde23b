// What stands before, between or behind the words of a command, for all commands alike.
#pragma once

#include <optional>
#include <string>

namespace host::cli {

enum class ConflictAnswer { replace, keep, skip };

struct Options {
    std::optional<std::string> device;   // --device; absent: the environment, then the embedded image
    bool json = false;                   // one JSON document on standard output
    bool yes = false;                    // confirmations are answered with their going-on button
    bool replace = false;                // a target that exists may be replaced
    std::optional<ConflictAnswer> conflict;
};

}  // namespace host::cli
