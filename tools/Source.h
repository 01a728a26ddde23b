#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// What the checks need to know of C++ sources, which is little.
namespace tools {

// `source` with each comment made blank; line ends stay where they were, and texts in quotes keep what they hold.
std::string withoutComments(std::string_view source);

struct UsedKey {
    std::string key;
    int line = 0;   // from 1
};

// The keys that `source` hands to localized(...): the string literals of its first argument. A key that is put together
// at run time (with +) cannot be told and is left out.
std::vector<UsedKey> localizedKeys(std::string_view source);

// .h and .cpp files below `root`/`folder`, as sorted paths from `root`. Empty where there is no such folder.
std::vector<std::string> sourceFiles(const std::filesystem::path &root, const std::string &folder);

// The whole file as bytes; throws std::runtime_error naming it when it cannot be read.
std::string readFile(const std::filesystem::path &file);

} // namespace tools
