#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>
#include <sys/stat.h>

#include "tests/support/TempFolder.h"
#include "toolkit/services/SystemCommand.h"

namespace fs = std::filesystem;

namespace {

using Files = std::map<std::string, std::string>;

// Commands run with "@" standing for a folder of the test's own.
class SystemCommandTest : public testing::Test {
protected:
    SystemCommandTest() {
        SystemCommand::setFailureListener([this](const SystemCommand::Failure &failure) { reason_ = failure.reason; });
    }
    ~SystemCommandTest() override { SystemCommand::setFailureListener({}); }
    void put(const std::string &name, const std::string &bytes) { writeFile(folder_ + "/" + name, bytes); }
    std::string placed(std::string text) const {
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos; at += folder_.size())
            text.replace(at, 1, folder_);
        return text;
    }
    int run(const std::string &command) {
        reason_.clear();
        return SystemCommand::run(NSString(placed(command)));
    }
    Files files() const {
        Files found;
        for (const auto &entry : fs::recursive_directory_iterator(folder_))
            if (!entry.is_directory())
                found[entry.path().lexically_relative(folder_).string()] = entry.is_regular_file() ? readFile(entry.path()) : "";
        return found;
    }

    TempFolder temporary_;
    const std::string folder_ = temporary_.path().string();
    std::string reason_;
};

TEST_F(SystemCommandTest, doesTheKnownCommands) {
    put("a;b $(x).jpg", "picture");
    fs::create_directory(folder_ + "/to");
    EXPECT_EQ(run("cp '@/a;b $(x).jpg' '@/to'"), 0);
    EXPECT_EQ(run("cp '@/a;b $(x).jpg' '@/to/b.jpg'"), 0);
    put("table.xls", "\xE4\xB8\xAD\xE2\x82\xAC\xF0\x9F\x98\x80z");
    EXPECT_EQ(run("iconv -f UTF8 -t GB18030 @/table.xls > @/scratch.xls"), 0);
    EXPECT_EQ(run("rm @/table.xls"), 0);
    EXPECT_EQ(run("mv @/scratch.xls @/table.xls"), 0);
    EXPECT_EQ(files(), (Files{{"a;b $(x).jpg", "picture"},
                              {"to/a;b $(x).jpg", "picture"},
                              {"to/b.jpg", "picture"},
                              {"table.xls", "\xD6\xD0\xA2\xE3\x94\x39\xFC\x36z"}}));
}

TEST_F(SystemCommandTest, refusesWhatAShellWouldReadOtherwise) {
    put("a", "1");
    put("b c", "2");
    fs::create_directory(folder_ + "/to");
    const Files before = files();
    for (const char *command :
         {"", "rm", "rm @/a @/b", "rm @/b c", "rm -rf @/to", "rm '-rf'", "rm @/*", "rm @/?", "rm @/a; true", "rm @/a & true", "rm @/a | true",
          "rm $(echo @/a)", "rm `echo @/a`", "rm \"@/a\"", "rm @/\\a", "rm ~/a", "rm @/{a,b}", "rm @/a #", "rm @/a\ntrue", "rm @/a\ttrue",
          "rm @/o'brien/a", "mv @/b c @/to", "mv @/a", "mv @/a > @/to", "cp '@/a'", "cp '@/a' '@/to' '@/b'", "cp -r '@/a' '@/to'",
          "cp '@/it's' '@/to'", "cp '@/a' > '@/to'", "iconv -f UTF8 -t GB18030 @/a @/x", "iconv -f UTF8 -t GB18030 @/a '>' @/x",
          "iconv -f UTF8 -t GB18030 @/b c > @/x", "iconv -f UTF8 -t UTF16 @/a > @/x", "iconv -f UTF8 -t GB18030 @/a > @/x > @/y",
          "sh -c 'true'", "touch @/x", "'rm @/a'", "RM @/a", "/bin/rm @/a"}) {
        EXPECT_EQ(run(command), SystemCommand::kRefused) << command;
        EXPECT_NE(reason_, "") << command;
    }
    EXPECT_EQ(SystemCommand::run(NSString(std::string_view("rm /x\0y", 7))), SystemCommand::kRefused);
    EXPECT_EQ(files(), before);
}

TEST_F(SystemCommandTest, failsWhereTheFilesAreNotWhatTheCommandNeeds) {
    put("a", "1");
    fs::create_directory(folder_ + "/folder");
    ::mkfifo((folder_ + "/pipe").c_str(), 0600);
    const Files before = files();
    for (const char *command : {"cp '@/none' '@/folder'", "cp '' '@/folder'", "cp '@/folder' '@/x'", "cp '@/pipe' '@/x'", "cp '@/a' '@/a'",
                                "cp '@/a' '@/none/x'", "rm @/none", "rm @/folder", "mv @/none @/x", "mv @/a @/none/x",
                                "iconv -f UTF8 -t GB18030 @/none > @/x", "iconv -f UTF8 -t GB18030 @/folder > @/x"})
        EXPECT_EQ(run(command), SystemCommand::kFailed) << command;
    EXPECT_EQ(files(), before);
}

TEST_F(SystemCommandTest, keepsTheOnlyCopyWhereRecodingFailed) {
    put("table.xls", "good \xD6\xD0 bad");
    EXPECT_EQ(run("iconv -f UTF8 -t GB18030 @/table.xls > @/scratch.xls"), SystemCommand::kFailed);
    EXPECT_EQ(reason_, placed("@/table.xls: a byte sequence that cannot be recoded, at byte 5"));
    EXPECT_EQ(run("rm @/table.xls"), SystemCommand::kFailed);
    EXPECT_EQ(run("mv @/scratch.xls @/table.xls"), SystemCommand::kFailed);
    EXPECT_EQ(files(), (Files{{"table.xls", "good \xD6\xD0 bad"}}));

    put("table.xls", "cut \xE4\xB8");
    EXPECT_EQ(run("iconv -f UTF8 -t GB18030 @/table.xls > @/scratch.xls"), SystemCommand::kFailed);
    put("table.xls", "good");
    EXPECT_EQ(run("iconv -f UTF8 -t GB18030 @/table.xls > @/scratch.xls"), 0);
    EXPECT_EQ(run("rm @/table.xls"), 0) << "a later recode that worked lets the source go";
}

TEST_F(SystemCommandTest, replacesALinkInsteadOfWritingThroughIt) {
    put("mine.txt", "mine");
    put("a", "new");
    fs::create_symlink(folder_ + "/mine.txt", folder_ + "/link");
    EXPECT_EQ(run("cp '@/a' '@/link'"), 0);
    EXPECT_EQ(files(), (Files{{"mine.txt", "mine"}, {"a", "new"}, {"link", "new"}}));
}

// Characters of several bytes meet every border of the pieces in which a file is read.
TEST_F(SystemCommandTest, recodesLongFilesAsTheyWouldBeInOnePiece) {
    for (const std::size_t shift : {0, 1, 2, 3}) {
        std::string text(shift, 'x'), expected = text;
        for (int count = 0; count < 200'000; ++count) {
            text += "\xE4\xB8\xAD";
            expected += "\xD6\xD0";
        }
        put("table.xls", text);
        EXPECT_EQ(run("iconv -f UTF8 -t GB18030 @/table.xls > @/scratch.xls"), 0);
        EXPECT_TRUE(files()["scratch.xls"] == expected) << shift;
    }
}

TEST_F(SystemCommandTest, copiesLongFilesWhole) {
    std::string bytes;
    for (std::uint32_t count = 0; count < 300'000; ++count)
        bytes += static_cast<char>(count * 2654435761U >> 24);
    put("a", bytes);
    put("b", "an older, other file");
    EXPECT_EQ(run("cp '@/a' '@/b'"), 0);
    EXPECT_TRUE(files()["b"] == bytes);
}

// Whatever a name is made of: what is to be kept stays, and nothing appears but what the forms make.
TEST_F(SystemCommandTest, runsNothingThatANameSays) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const char *pieces[] = {"'", "\"", ";", " ", "$(", ")", "`", "rm ", "-rf ", "*", ">", "|", "&", "\\", "\n", "..", "keep", "@", "/", "~", "x", "-", "\xFF"};
    put("deep/deeper/keep", "kept");
    put("keep", "kept");
    for (int round = 0; round < 200; ++round) {
        std::string name;
        for (auto count = random() % 8 + 1; count > 0; --count)
            name += pieces[random() % std::size(pieces)];
        put("source", "new");
        put("made", "new");
        put("scratch", "new");
        run("cp '@/source" + name + "' '@/deep/deeper/made'");
        run("iconv -f UTF8 -t GB18030 @/made" + name + " > @/scratch");
        run("rm @/made" + name);
        run("mv @/scratch @/made" + name);
    }
    fs::remove(folder_ + "/deep/deeper/made");
    const Files left = files();
    for (const auto &[name, bytes] : left)
        EXPECT_TRUE(name == "source" || name == "keep" || name == "deep/deeper/keep" || name.starts_with("made") || name == "scratch") << name;
    EXPECT_EQ(left.at("keep"), "kept");
    EXPECT_EQ(left.at("deep/deeper/keep"), "kept");
}

TEST(Paths, thatCommandsCanTake) {
    struct Row {
        const char *path;
        bool plain, quotable;
    };
    for (const Row &row : {Row{"/home/ada/Messages_20240305.xls", true, true}, Row{"/home/\xE4\xB8\xAD/a=b,c%d+e@f:g", true, true},
                           Row{"/home/my files/x", false, true}, Row{"/home/a;b", false, true}, Row{"/home/a$b", false, true},
                           Row{"/home/a~1", false, true}, Row{"/home/a\tb", false, true}, Row{"/home/o'brien", false, false},
                           Row{"-x", false, true}, Row{"", false, false}}) {
        EXPECT_EQ(SystemCommand::isPlain(row.path), row.plain) << row.path;
        EXPECT_EQ(SystemCommand::isQuotable(row.path), row.quotable) << row.path;
    }
}

}  // namespace
