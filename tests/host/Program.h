// The program itself, run end to end: a private home, arguments in, exit status and both outputs back.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TempFolder.h"

namespace testhost {

using ::pictureOf, ::readFile, ::TempFolder;

struct Outcome {
    int status = -1;   // 128 + the signal where one ended it
    std::string out, err;
};

class Program {
public:
    // Runs in the home folder, without a terminal; `prefix` stands before the program ("flock", ...).
    [[nodiscard]] Outcome run(const std::vector<std::string> &arguments, const std::vector<std::string> &prefix = {}) const;
    // Runs and expects this exit status and, as a part of standard error, this text.
    Outcome refused(const std::vector<std::string> &arguments, int status, std::string_view told, const std::vector<std::string> &prefix = {}) const;
    // The same with a person at a terminal, who types `line` once `question` shows. What shows is `err`.
    [[nodiscard]] Outcome runOnTerminal(const std::vector<std::string> &arguments, std::string_view question, const std::string &line) const;
    // The document on standard output; discarded where it is none.
    [[nodiscard]] nlohmann::ordered_json json(std::vector<std::string> arguments, int status = 0) const;

    [[nodiscard]] std::filesystem::path home() const { return home_.path(); }
    // A new image with two contacts and a group: "1" Ada Lovelace and "2" (a control character in its name), both in the
    // group Friends but for "2".
    [[nodiscard]] std::string smallImage(const std::string &name) const;
    // A new image without contacts.
    [[nodiscard]] std::string emptyImage(const std::string &name) const;
    // A backup folder with the files of such an image.
    [[nodiscard]] std::string smallBackup(const std::string &name) const { return backupOf(smallImage(name + "-image"), name); }
    // A backup folder with all files of an image.
    [[nodiscard]] std::string backupOf(const std::filesystem::path &image, const std::string &name) const;
    std::string file(const std::string &name, std::string_view bytes) const;

private:
    struct Streams {
        std::string in, out, err;   // files
    };
    [[nodiscard]] pid_t start(const std::vector<std::string> &words, const Streams &streams) const;

    TempFolder home_{std::filesystem::temp_directory_path()};   // on a real disk, as the program meets it
};

}  // namespace testhost
