#include <gtest/gtest.h>

#include "tools/Includes.h"

namespace {

struct Row {
    const char *name, *file, *include;
    const char *fault;   // a piece of the reason, "" where the include may be
    bool angled = false;
};
const char kContacts[] = "HNManagerPlugin/Classes/SubViews/Contacts/C.h";

TEST(IncludeOf, isJudged) {
    const auto exists = [](const std::string &path) { return path.find('/') != std::string::npos && path != "sys/stat.h"; };
    const Row rows[] = {
        {"contractsOnToolkit", "HNManagerPlugin/contracts/A.h", "toolkit/B.h", ""},
        {"toolkitOnContracts", "toolkit/B.h", "HNManagerPlugin/contracts/A.h", "floor 1 to floor 2"},
        {"contractsOnPlugin", "HNManagerPlugin/contracts/A.h", "HNManagerPlugin/HNCustomMethod.h", "points up"},
        {"pluginOnDevice", kContacts, "device/FileTree.h", "points up"},
        {"deviceOnContracts", "device/D.cpp", "HNManagerPlugin/contracts/A.h", ""},
        {"deviceOnPlugin", "device/D.cpp", kContacts, "into the plug-in"},
        {"hostOnPlugin", "host/cli/C.cpp", "HNManagerPlugin/GA/G.h", "into the plug-in"},
        {"hostOnDevice", "host/cli/C.cpp", "device/D.h", ""},
        {"ownCategory", kContacts, "HNManagerPlugin/Classes/SubViews/Contacts/D.h", ""},
        {"otherCategory", kContacts, "HNManagerPlugin/Classes/SubViews/Books/D.h", "sideways"},
        {"categoryOnShared", kContacts, "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h", ""},
        {"sharedOnCategory", "HNManagerPlugin/Classes/ViewModel/A.cpp", kContacts, "into a category"},
        {"nibOnCategory", "HNManagerPlugin/Resources/Nibs/N.cpp", kContacts, ""},
        {"windowOnCommandLine", "host/window/W.cpp", "host/cli/C.h", "sideways"},
        {"windowOnServices", "host/window/W.cpp", "host/services/S.h", ""},
        {"cliOnTheImportsFrontDoor", "host/cli/C.cpp", "host/import/Handover.h", ""},
        {"cliBehindTheImportsFrontDoor", "host/cli/C.cpp", "host/import/CardReader.h", "sideways"},
        {"servicesOnWindow", "host/services/S.cpp", "host/window/W.h", "sideways"},
        {"testsOnAnything", "tests/host/T.cpp", "HNManagerPlugin/GA/G.h", ""},
        {"productOnTests", "toolkit/B.h", "tests/support/E.h", "no floor"},
        {"notFromTheRoot", "toolkit/B.h", "C.h", "repository's root"},
        {"ownAngled", "toolkit/B.h", "toolkit/C.h", "double quotes", true},
        {"standard", "toolkit/B.h", "vector", "", true}, {"posix", kContacts, "sys/stat.h", "", true},
        {"thirdParty", kContacts, "sqlite3.h", "neither", true}, {"regex", kContacts, "regex", "neither", true},
        {"thirdPartyOnDevice", "device/D.cpp", "sqlite3.h", "", true}};
    for (const Row &row : rows) {
        const std::string fault = tools::includeFault(row.file, {1, row.angled, row.include}, exists);
        EXPECT_TRUE(*row.fault ? fault.find(row.fault) != std::string::npos : fault.empty()) << row.name << " was: " << fault;
    }
}

TEST(IncludesOf, areFoundWithTheirLinesAndNotInComments) {
    const auto found = tools::includesOf("/* #include \"no.h\"\n*/#include <vector>\n// #include <map>\n"
                                         " #  include \"toolkit/A.h\" // why\nauto s = \"/*\";\n#include <set>\n");
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].path, "vector");
    EXPECT_EQ(found[0].line, 2);
    EXPECT_EQ(found[1].path, "toolkit/A.h");
    EXPECT_FALSE(found[1].angled);
    EXPECT_EQ(found[2].line, 6);
}

} // namespace
