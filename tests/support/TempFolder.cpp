#include "tests/support/TempFolder.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

fs::path memoryOrDisk() {
    const fs::path memory = "/dev/shm";
    std::error_code error;
    return fs::is_directory(memory, error) && ::access(memory.c_str(), W_OK) == 0 ? memory : fs::temp_directory_path();
}

}  // namespace

TempFolder::TempFolder() : TempFolder(memoryOrDisk()) {}

TempFolder::TempFolder(const fs::path &parent) {
    std::string pattern = (parent / "hnmanager-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string readFile(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const fs::path &file, std::string_view bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string pictureOf(const fs::path &folder) {
    std::set<std::string> entries;
    for (const auto &entry : fs::recursive_directory_iterator(folder))
        entries.insert(fs::relative(entry.path(), folder).string() + "\n" + (entry.is_regular_file() ? readFile(entry.path()) : "/"));
    std::string picture;
    for (const std::string &entry : entries)
        picture += entry + "\n";
    return picture;
}
