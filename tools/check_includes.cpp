// usage: check_includes ROOT      tells each include that breaks the rule of the floors; status 1 if there is any

#include <filesystem>
#include <iostream>

#include "tools/Includes.h"
#include "tools/Source.h"

namespace {

int faultsOf(const std::filesystem::path &root, const std::string &file) {
    const auto exists = [&](const std::string &path) { return std::filesystem::is_regular_file(root / path); };
    int faults = 0;
    for (const tools::Include &include : tools::includesOf(tools::readFile(root / file))) {
        const std::string reason = tools::includeFault(file, include, exists);
        if (reason.empty())
            continue;
        std::cerr << file << ':' << include.line << ": " << include.path << ' ' << reason << '\n';
        ++faults;
    }
    return faults;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: check_includes ROOT\n";
        return 2;
    }
    int faults = 0;
    std::size_t count = 0;
    for (const char *folder : {"toolkit", "HNManagerPlugin", "device", "host"})
        for (const std::string &file : tools::sourceFiles(argv[1], folder)) {
            faults += faultsOf(argv[1], file);
            ++count;
        }
    std::cout << count << " files, " << faults << " includes that may not be\n";
    return faults == 0 ? 0 : 1;
}
