// The module as a host meets it: opened at run time. That its objects cross the boundary is proved by every command.
#include "host/services/PluginModule.h"

#include <gtest/gtest.h>

#include "tests/host/Program.h"

namespace {

TEST(PluginModule, tellsWhatIsWrongWithWhatIsNone) {
    const testhost::TempFolder folder;
    const auto reasonOf = [](const std::string &path) {
        try {
            (void)host::loadPlugin(path);
        } catch (const host::PluginError &error) {
            return std::string(error.what());
        }
        return std::string("loaded");
    };
    EXPECT_NE(reasonOf((folder.path() / "none.so").string()).find("none.so"), std::string::npos);
    const std::string library = HN_BINARY_DIR "/libcontracts.so";
    EXPECT_EQ(reasonOf(library), library + ": is no plug-in, it does not export HNManagerPluginPrincipalClass");
}

}  // namespace
