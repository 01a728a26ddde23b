// The module as a host meets it: opened at run time, while this program holds none of the plug-in's own code.
#include "host/services/PluginModule.h"

#include <gtest/gtest.h>

#include "tests/host/Program.h"
#include "tests/support/TestWorld.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NSViewController.h"

namespace {

const std::string kModule = HN_BINARY_DIR "/HNManagerPlugin.so";

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

TEST(PluginModule, objectsCrossItsBoundaryWithTheirClasses) {
    const TestWorld world;
    const auto resources = std::make_shared<NSBundle>(NSString(HN_BINARY_DIR "/Resources"));
    NSBundle::setMainBundle(resources);
    NSBundle::setPluginBundle(resources);
    {
        const auto principal = host::loadPlugin(kModule);
        const auto main = principal->loadWithViewController();
        EXPECT_EQ(main, principal->loadWithViewController());
        ASSERT_TRUE(main);
        EXPECT_EQ(main->className(), NSString("HNManagerMainViewController"));
        EXPECT_TRUE(main->isKindOf<NSViewController>());
        EXPECT_FALSE(main->isMemberOf<NSViewController>());   // a class that only the module knows
        const id view = main->view();
        EXPECT_TRUE(dynamic_cast<NSView *>(view.get()));
        EXPECT_FALSE(dynamic_cast<NSWindow *>(view.get()));
        const id tree = main->valueForKeyPath("viewModel.outlineTreeController").object();
        ASSERT_TRUE(tree);
        EXPECT_EQ(tree->className(), NSString("NSTreeController"));
    }
    dispatch::settle();
}

}  // namespace
