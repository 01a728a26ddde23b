// usage: check_texts ROOT TABLE      tells each key in a localized("...") of the sources that TABLE has no text for

#include <iostream>
#include <set>

#include "tools/Source.h"
#include "tools/StringsFile.h"

namespace {

int missingIn(const std::filesystem::path &root, const std::string &file, const std::set<std::string> &known) {
    int missing = 0;
    for (const tools::UsedKey &used : tools::localizedKeys(tools::readFile(root / file))) {
        if (known.contains(used.key))
            continue;
        std::cerr << file << ':' << used.line << ": no text for \"" << used.key << "\"\n";
        ++missing;
    }
    return missing;
}

int check(const std::filesystem::path &root, const std::string &table) {
    std::set<std::string> known;
    for (const tools::StringsEntry &entry : tools::parseStrings(tools::readFile(table), table))
        known.insert(entry.key);
    int missing = 0;
    for (const char *folder : {"toolkit", "HNManagerPlugin", "device", "host"})
        for (const std::string &file : tools::sourceFiles(root, folder))
            missing += missingIn(root, file, known);
    std::cout << known.size() << " texts, " << missing << " uses of a key without one\n";
    return missing == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::cerr << "usage: check_texts ROOT TABLE\n";
        return 2;
    }
    try {
        return check(argv[1], argv[2]);
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
