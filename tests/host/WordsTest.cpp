// Completion and manual page name what the program takes, so that a new command is not forgotten there.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/host/Program.h"

namespace {

using Words = std::vector<std::string>;

// Options and commands that a help text lists, each on a line of its own.
void collect(const testhost::Program &program, const Words &before, std::vector<Words> &found) {
    Words arguments = before;
    arguments.emplace_back("--help");
    std::istringstream help(program.run(arguments).out);
    bool inCommands = false;
    for (std::string line; std::getline(help, line);) {
        if (!line.starts_with("  ")) {
            inCommands = line == "Subcommands:";
            continue;
        }
        std::string word;
        std::istringstream(line) >> word;
        Words all = before;
        all.push_back(word.substr(word.find(',') + 1));
        if (word.starts_with('-') || (inCommands && line[2] != ' '))
            found.push_back(all);
        if (inCommands && line[2] != ' ')
            collect(program, all, found);
    }
}

std::string without(std::string text, char unwanted) {
    std::erase(text, unwanted);
    return text;
}

TEST(CompletionAndManual, nameEveryWordOfTheProgram) {
    const testhost::Program program;
    std::vector<Words> found;
    collect(program, {}, found);
    ASSERT_GT(found.size(), 20u);
    const std::filesystem::path cli = std::filesystem::path(HN_SAMPLES_DIR) / "../../host/cli";
    const std::string completion = testhost::readFile(cli / "completion/hnmanager.bash");
    const std::string manual = without(testhost::readFile(cli / "hnmanager.1"), '\\');
    for (const Words &words : found) {
        EXPECT_NE(completion.find(words.back()), std::string::npos) << words.back();
        EXPECT_NE(manual.find(words.back()), std::string::npos) << words.back();
    }
}

}  // namespace
