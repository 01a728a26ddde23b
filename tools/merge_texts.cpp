// usage: merge_texts TABLE FILE...      writes the texts of all files as one table; a key that comes twice fails

#include <fstream>
#include <iostream>

#include "tools/Source.h"
#include "tools/StringsFile.h"

namespace {

int merge(const std::string &table, const std::vector<std::string> &files) {
    std::vector<std::vector<tools::StringsEntry>> parsed;
    parsed.reserve(files.size());
    for (const std::string &file : files)
        parsed.push_back(tools::parseStrings(tools::readFile(file), file));
    const std::string text = tools::formatStrings(tools::mergeStrings(parsed));
    std::ofstream stream(table, std::ios::binary | std::ios::trunc);
    if (!(stream << text << std::flush))
        throw std::runtime_error("cannot write " + table);
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3) {
        std::cerr << "usage: merge_texts TABLE FILE...\n";
        return 2;
    }
    try {
        return merge(argv[1], {argv + 2, argv + argc});
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
