#include <gtest/gtest.h>

#include "tools/Includes.h"

namespace {

struct Row {
    const char *name, *file, *include;
    const char *fault;   // a piece of the reason, "" where the include may be
    bool angled = false;
};
class IncludeOf : public testing::TestWithParam<Row> {};

const char kContacts[] = "HNManagerPlugin/Classes/SubViews/Contacts/C.h";

TEST_P(IncludeOf, isJudged) {
    const auto exists = [](const std::string &path) { return path.find('/') != std::string::npos && path != "sys/stat.h"; };
    const std::string fault =
        tools::includeFault(GetParam().file, {1, GetParam().angled, GetParam().include}, exists);
    if (*GetParam().fault == '\0')
        EXPECT_EQ(fault, "");
    else
        EXPECT_NE(fault.find(GetParam().fault), std::string::npos) << "but was: " << fault;
}

INSTANTIATE_TEST_SUITE_P(
    Floors, IncludeOf,
    testing::Values(
        Row{"contractsOnToolkit", "HNManagerPlugin/contracts/A.h", "toolkit/B.h", ""},
        Row{"toolkitOnContracts", "toolkit/B.h", "HNManagerPlugin/contracts/A.h", "floor 1 to floor 2"},
        Row{"contractsOnPlugin", "HNManagerPlugin/contracts/A.h", "HNManagerPlugin/HNCustomMethod.h", "points up"},
        Row{"pluginOnDevice", kContacts, "device/FileTree.h", "points up"},
        Row{"deviceOnContracts", "device/D.cpp", "HNManagerPlugin/contracts/A.h", ""},
        Row{"deviceOnPlugin", "device/D.cpp", kContacts, "into the plug-in"},
        Row{"hostOnPlugin", "host/cli/C.cpp", "HNManagerPlugin/GA/G.h", "into the plug-in"},
        Row{"hostOnDevice", "host/cli/C.cpp", "device/D.h", ""},
        Row{"ownCategory", kContacts, "HNManagerPlugin/Classes/SubViews/Contacts/D.h", ""},
        Row{"otherCategory", kContacts, "HNManagerPlugin/Classes/SubViews/Books/D.h", "sideways"},
        Row{"categoryOnShared", kContacts, "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h", ""},
        Row{"sharedOnCategory", "HNManagerPlugin/Classes/ViewModel/A.cpp", kContacts, "into a category"},
        Row{"nibOnCategory", "HNManagerPlugin/Resources/Nibs/N.cpp", kContacts, ""},
        Row{"windowOnCommandLine", "host/window/W.cpp", "host/cli/C.h", "sideways"},
        Row{"windowOnServices", "host/window/W.cpp", "host/services/S.h", ""},
        Row{"cliOnTheImportsFrontDoor", "host/cli/C.cpp", "host/import/Handover.h", ""},
        Row{"cliBehindTheImportsFrontDoor", "host/cli/C.cpp", "host/import/CardReader.h", "sideways"},
        Row{"servicesOnWindow", "host/services/S.cpp", "host/window/W.h", "sideways"},
        Row{"testsOnAnything", "tests/host/T.cpp", "HNManagerPlugin/GA/G.h", ""},
        Row{"productOnTests", "toolkit/B.h", "tests/support/E.h", "no floor"},
        Row{"notFromTheRoot", "toolkit/B.h", "C.h", "repository's root"},
        Row{"ownAngled", "toolkit/B.h", "toolkit/C.h", "double quotes", true},
        Row{"standard", "toolkit/B.h", "vector", "", true}, Row{"posix", kContacts, "sys/stat.h", "", true},
        Row{"thirdParty", kContacts, "sqlite3.h", "neither", true}, Row{"regex", kContacts, "regex", "neither", true},
        Row{"thirdPartyOnDevice", "device/D.cpp", "sqlite3.h", "", true}),
    [](const auto &row) { return std::string(row.param.name); });

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
