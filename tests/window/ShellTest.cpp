// The program's window with the plug-in in it, on a sample device: what a person does, by clicks and keys.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>

#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "device/sample/Sample.h"
#include "host/window/Accessibility.h"
#include "host/window/Categories.h"
#include "host/window/Shell.h"
#include "host/window/ViewSurface.h"
#include "tests/window/WindowWorld.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSTextField.h"

namespace {

namespace fs = std::filesystem;

// The user's folders of this process lie in a folder of the test's own.
class PrivateFolders {
public:
    PrivateFolders() {
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
            qputenv(name, (folder_.path() + u'/' + name).toUtf8());
    }
    [[nodiscard]] fs::path path() const { return folder_.path().toStdString(); }

private:
    QTemporaryDir folder_;
};

constexpr std::int64_t kDoneTag = 15;

// The enabled button of a progress window that is done; null while it works.
std::shared_ptr<NSButton> buttonOf(const std::shared_ptr<NSWindow> &window) {
    std::shared_ptr<NSButton> found;
    if (window && window->isMemberOf<RUIWindow>())
        window->contentView()->walk([&](NSView &view) {
            auto *one = dynamic_cast<NSButton *>(&view);
            if (one && one->isEnabled() && !one->isHiddenOrHasHiddenAncestor() && one->tag() == kDoneTag)
                found = std::static_pointer_cast<NSButton>(one->shared_from_this());
            return true;
        });
    return found;
}

class ShellTest : public testing::Test {
protected:
    void SetUp() override {
        device::sample::createSampleImage(image());
        services = std::make_unique<host::Services>([](const std::string &) {}, [](device::AccessError::Kind, const std::string &) {});
        services->openDevice(image());
        shell = make<host::Shell>();
        shell->start(*services, std::static_pointer_cast<host::QtPresenter>(Presenter::current()));
        surface = &world.surfaceOf(*shell->window()->contentView());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(surface->parentWidget()));
        shell->choose(host::kContactsCategory);
        ASSERT_TRUE(world.until([&] { return shell->hasLoaded() && shell->list() && dispatch::waitingMainBlocks() == 0; }, "the list of contacts"));
    }
    void TearDown() override {
        shell->close();
        shell = nullptr;
        world.serve();
        services.reset();
    }
    [[nodiscard]] fs::path image() const { return folders.path() / "phone"; }
    void picture(const char *name) {
        world.serve();
        world.picture(*surface->parentWidget(), name);
    }
    std::string firstCell() {
        const auto cell = std::dynamic_pointer_cast<NSTableCellView>(shell->list()->viewAtColumn_row_makeIfNecessary(1, 0, true));
        return cell && cell->textField() ? cell->textField()->stringValue().str() : "";
    }

    PrivateFolders folders;
    WindowWorld world;
    std::unique_ptr<host::Services> services;
    std::shared_ptr<host::Shell> shell;
    host::ViewSurface *surface = nullptr;
};

}  // namespace

TEST_F(ShellTest, showsTheContactsOfTheDeviceAndNamesEveryControl) {
    EXPECT_GT(shell->list()->numberOfRows(), 10);
    EXPECT_EQ(surface->parentWidget()->windowTitle().toStdString(), shell->window()->title().str());
    EXPECT_EQ(host::accessibilityDump(*surface).find("unnamed"), std::string::npos) << host::accessibilityDump(*surface);
    picture("contacts-light");
}

TEST_F(ShellTest, searchesAsOneTypesAndSelectsByClicks) {
    const std::int64_t all = shell->list()->numberOfRows();
    QTest::keyClick(surface, Qt::Key_F, Qt::ControlModifier);
    world.serve();
    ASSERT_NE(shell->searchField(), nullptr);
    if (shell->window()->firstResponder() != shell->searchField())
        world.click(*shell->searchField());
    world.type("lena");
    ASSERT_TRUE(world.until([&] { return shell->list()->numberOfRows() < all && dispatch::waitingMainBlocks() == 0; }, "fewer rows"));
    EXPECT_EQ(firstCell(), "Lena Fischer");
    const NSRect row = shell->list()->rectOfRow(0);
    world.clickAt(*shell->list(), {row.minX() + 200, row.minY() + 10});
    EXPECT_EQ(shell->list()->numberOfSelectedRows(), 1);
    picture("contacts-search");
}

TEST_F(ShellTest, aCategoryWithoutANibShowsSoAndTheTreeFollows) {
    shell->choose(6);
    EXPECT_TRUE(world.until([&] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0; }));
    EXPECT_EQ(shell->list(), nullptr);
    shell->choose(host::kContactsCategory);
    EXPECT_TRUE(world.until([&] { return shell->list() != nullptr; }));
}

TEST_F(ShellTest, aDroppedCardGoesThroughTheImportButton) {
    const fs::path card = folders.path() / "new.vcf";
    std::ofstream(card) << "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Zuse;Konrad;;;\r\nFN:Konrad Zuse\r\nTEL;type=CELL:+49 30 1941\r\nEND:VCARD\r\n";
    const auto button = shell->buttonWithAction("onImportButton:");
    ASSERT_NE(button, nullptr);
    const std::int64_t before = shell->list()->numberOfRows();
    EXPECT_FALSE(shell->takesFiles(nullptr));
    // The drop's own call ends with the flow's window, which waits for a person.
    const auto done = [] { return buttonOf(NSApp()->modalWindow()); };
    world.once([done] { return done() != nullptr; }, [this, done] {
        world.picture(*world.presenter().mirrorOf(*NSApp()->modalWindow()), "import-result");
        world.click(*done());
    });
    EXPECT_TRUE(shell->dropFiles(shell->list(), {QString::fromStdString(card.string())}));
    ASSERT_TRUE(world.until([&] { return shell->hasLoaded() && shell->list() && shell->list()->numberOfRows() == before + 1; }, "one row more"));
}

TEST_F(ShellTest, switchesDevicesAndRemembersThem) {
    const fs::path other = folders.path() / "other";
    device::sample::createImage(other, "Other Phone");
    EXPECT_FALSE(shell->openDevice(folders.path() / "nothing"));
    world.serve();
    for (QWidget *box : QApplication::topLevelWidgets())
        if (box->inherits("QMessageBox"))
            box->close();
    EXPECT_EQ(shell->window()->title(), NSString("Sample Phone"));
    ASSERT_TRUE(shell->openDevice(other));
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Other Phone");
    EXPECT_TRUE(world.until([&] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0; }));
    EXPECT_EQ(shell->recentDevices(), std::vector<std::string>{other.string()});
    picture("contacts-empty");
}
