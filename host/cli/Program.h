// The command line program from its arguments to its exit status.
#pragma once

namespace host::cli {

inline constexpr const char *kVersion = "0.1.0";

[[nodiscard]] int runProgram(int argc, const char *const *argv);

}  // namespace host::cli
