#include "tests/host/Program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device/sample/Sample.h"
#include "device/sqlite/Database.h"
#include "tests/support/TestBackup.h"

namespace testhost {

namespace fs = std::filesystem;

namespace {

constexpr const char *kBook = "HomeDomain/Library/AddressBook/AddressBook.sqlitedb";

std::vector<char *> pointersTo(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Only what is told: no setting of the tester's own reaches the program.
std::vector<std::string> environmentOf(const fs::path &home) {
    std::vector<std::string> variables = {"HOME=" + home.string(), "PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8"};
    for (const char *name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS", "TZ"})
        if (const char *value = std::getenv(name))
            variables.push_back(std::string(name) + "=" + value);
    return variables;
}

int statusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

pid_t Program::start(const std::vector<std::string> &words, const Streams &streams) const {
    std::vector<std::string> command = words, variables = environmentOf(home());
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);   // no terminal of the tester's
    posix_spawn_file_actions_addchdir_np(&actions, home().c_str());
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, streams.in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, streams.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, streams.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t child = 0;
    const int error = posix_spawnp(&child, words.front().c_str(), &actions, &attributes, pointersTo(command).data(), pointersTo(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + words.front());
    return child;
}

Outcome Program::run(const std::vector<std::string> &arguments, const std::vector<std::string> &prefix) const {
    const TempFolder outputs;
    const std::string out = (outputs.path() / "out").string(), err = (outputs.path() / "err").string();
    std::vector<std::string> words = prefix;
    words.push_back(HN_BINARY_DIR "/hnmanager");
    words.insert(words.end(), arguments.begin(), arguments.end());
    const int status = statusOf(start(words, {"/dev/null", out, err}));
    return {status, readFile(out), readFile(err)};
}

Outcome Program::runOnTerminal(const std::vector<std::string> &arguments, std::string_view question, const std::string &line) const {
    const TempFolder outputs;
    const std::string out = (outputs.path() / "out").string();
    const int person = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (person < 0 || grantpt(person) != 0 || unlockpt(person) != 0)
        throw std::runtime_error("no terminal");
    const std::string terminal = ptsname(person);
    std::vector<std::string> words = {HN_BINARY_DIR "/hnmanager"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const pid_t child = start(words, {terminal, out, terminal});
    std::string shown;
    bool isTyped = false;
    for (char c = 0; read(person, &c, 1) == 1;) {   // an error once the program has ended
        shown += c;
        if (!isTyped && shown.ends_with(question)) {
            isTyped = true;
            EXPECT_EQ(::write(person, (line + "\n").data(), line.size() + 1), static_cast<ssize_t>(line.size() + 1));
        }
    }
    const int status = statusOf(child);
    close(person);
    EXPECT_TRUE(isTyped) << shown;
    return {status, readFile(out), shown};
}

Outcome Program::refused(const std::vector<std::string> &arguments, int status, std::string_view told, const std::vector<std::string> &prefix) const {
    Outcome outcome = run(arguments, prefix);
    EXPECT_EQ(outcome.status, status) << testing::PrintToString(arguments);
    EXPECT_NE(outcome.err.find(told), std::string::npos) << testing::PrintToString(arguments) << ": " << outcome.err;
    return outcome;
}

nlohmann::ordered_json Program::json(std::vector<std::string> arguments, int status) const {
    arguments.emplace_back("--json");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    return nlohmann::ordered_json::parse(outcome.out, nullptr, false);
}

std::string Program::emptyImage(const std::string &name) const {
    device::sample::createImage(home() / name, "Test Phone");
    return (home() / name).string();
}

std::string Program::smallImage(const std::string &name) const {
    const fs::path folder = emptyImage(name);
    device::sqlite::Database(folder / kBook, device::sqlite::Access::readWrite).exec(readFile(HN_SAMPLES_DIR "/addressbook/twoContacts.sql"));
    return folder.string();
}

std::string Program::backupOf(const fs::path &image, const std::string &name) const {
    const TestBackup backup(home() / name);
    backup.addAll(image);
    return backup.path().string();
}

std::string Program::file(const std::string &name, std::string_view bytes) const {
    writeFile(home() / name, bytes);
    return (home() / name).string();
}

}  // namespace testhost
