#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/MainViewController/OutlineView/HNFileTypeOutlineView.h"
#include "HNManagerPlugin/Classes/MainViewController/ViewManager/HNFileTypeViewManager.h"
#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"

namespace {

// A backup task that says which speed was asked for.
class LoggingTask : public RKBackupAndRestoreTask {
public:
    explicit LoggingTask(EventLog *log) : log_(log) {}
    void enterSpeedLimitBackup() override { log_->add("slow"); }
    void exitSpeedLimitBackup() override { log_->add("full"); }

private:
    EventLog *log_;
};

constexpr std::size_t kPhotos = 0, kMusic = 1, kVideos = 2, kContacts = 3, kMessages = 7;

class CategoryTree : public testing::Test {
protected:
    void SetUp() override {
        RKBackupAndRestoreTask::setSharedInstance(alloc<LoggingTask>(&speed_));
        plugin_ = make<HNManagerPrincipalClass>();
        plugin_->loadWithViewController();
        window_ = make<NSWindow>(NSRect(0, 0, 1200, 660));
        window_->setContentView(plugin_->mainViewController->view());
        window_->orderFront();
        manager_ = std::dynamic_pointer_cast<HNFileTypeViewManager>(plugin_->mainViewController->viewManager.lock());
        ASSERT_TRUE(manager_);
        outline_ = manager_->outlineView.lock();
        ASSERT_TRUE(outline_);
    }
    void TearDown() override {
        window_->close();
        window_ = nullptr;
        manager_ = nullptr;
        outline_ = nullptr;
        plugin_ = nullptr;
        world_.settle();
    }

    std::shared_ptr<NSTreeNode> top(std::size_t index) {
        return manager_->viewModel.lock()->outlineTreeController->arrangedObjects()->childAtIndex(index);
    }
    std::shared_ptr<HNFileTypeObject> object(const std::shared_ptr<NSTreeNode> &node) { return node->represented<HNFileTypeObject>(); }
    void click(const std::shared_ptr<NSTreeNode> &node) { outline_->performClick(outline_->rowForItem(node)); }
    // The rows on show, the selected one in brackets, groups with + or -.
    std::string rows() {
        std::string text;
        for (std::int64_t row = 0; row < outline_->numberOfRows(); ++row) {
            const auto node = outline_->itemAtRow(row);
            std::string name = object(node)->fileTypeName.get().str();
            name.erase(0, std::string("FileManager_").size());
            if (node->childCount() > 0)
                name = (outline_->isItemExpanded(node) ? "-" : "+") + name;
            text += (text.empty() ? "" : " ") + (outline_->isRowSelected(row) ? "[" + name + "]" : name);
        }
        return text;
    }
    std::string shown() {
        std::string text;
        for (const auto &[nib, controller] : manager_->controllers)
            if (controller->isViewLoaded() && controller->view()->superview() == manager_->dataShowContentView.lock())
                text += nib.str();
        return text;
    }

    PluginWorld world_;
    EventLog speed_;
    std::shared_ptr<HNManagerPrincipalClass> plugin_;
    std::shared_ptr<NSWindow> window_;
    std::shared_ptr<HNFileTypeViewManager> manager_;
    std::shared_ptr<NSOutlineView> outline_;
};

constexpr const char *kStartRows = "-Photos [CameraRoll] Albums +Music Videos Contacts Apps Books Bookmarks Messages";

}  // namespace

TEST_F(CategoryTree, startsOnTheFirstLeaf) {
    EXPECT_EQ(rows(), kStartRows);
    EXPECT_EQ(shown(), "HNMphotoViewController");
    const auto leaf = object(top(kPhotos)->childAtIndex(0));
    EXPECT_TRUE(sameColor(leaf->textColor, NSColor::whiteColor()));
    EXPECT_TRUE(leaf->itemCountString.get().isNil());
    EXPECT_TRUE(object(top(kPhotos))->imageA && object(top(kPhotos))->fileTypeImage.get() == object(top(kPhotos))->imageA);
    // the tree never stands without a selection: the group is chosen for a moment, then its leaf
    EXPECT_EQ(speed_.take(), "slow\nslow");
}

TEST_F(CategoryTree, aClickOnTheOpenParentClosesTheGroupAndKeepsLeafAndView) {
    click(top(kPhotos));
    EXPECT_EQ(rows(), "+Photos +Music Videos Contacts Apps Books Bookmarks Messages");
    EXPECT_EQ(manager_->viewModel.lock()->outlineTreeController->selectionIndexPath(), (NSIndexPath{0, 0}));
    EXPECT_EQ(shown(), "HNMphotoViewController");
    click(top(kPhotos));
    EXPECT_EQ(rows(), kStartRows);
}

TEST_F(CategoryTree, aClickOnAClosedGroupOpensItOnItsFirstLeaf) {
    (void)speed_.take();
    click(top(kMusic));
    EXPECT_EQ(rows(), "-Photos CameraRoll Albums -Music [MusicList] Ringtones Videos Contacts Apps Books Bookmarks Messages");
    EXPECT_EQ(shown(), "HNMmusicViewController");
    EXPECT_FALSE(sameColor(object(top(kPhotos)->childAtIndex(0))->textColor, NSColor::whiteColor()));
    EXPECT_TRUE(sameColor(object(top(kMusic)->childAtIndex(0))->textColor, NSColor::whiteColor()));
    EXPECT_EQ(object(top(kMusic))->expandMarkIcon.get(), object(top(kMusic))->expandMarkIconB);
}

TEST_F(CategoryTree, anEntryWithoutChildrenIsALeafForClicksAlone) {
    click(top(kVideos));
    EXPECT_EQ(shown(), "HNMvideoViewController");
    EXPECT_FALSE(object(top(kVideos))->isLeaf());
    EXPECT_EQ(object(top(kVideos))->fileTypeImage.get(), object(top(kVideos))->imageB);
    click(top(kContacts));
    EXPECT_EQ(object(top(kVideos))->fileTypeImage.get(), object(top(kVideos))->imageA);
}

TEST_F(CategoryTree, asksForSpeedAtEverySelection) {
    (void)speed_.take();
    click(top(kMessages));
    click(top(kVideos));
    click(top(kMessages));
    EXPECT_EQ(speed_.take(), "full\nslow\nfull");
    manager_->selectRowAtIndex(outline_->selectedRow());
    EXPECT_EQ(speed_.take(), "full");
    manager_->selectRowAtIndex(-1);
    EXPECT_EQ(speed_.take(), "");
}

TEST_F(CategoryTree, keepsTheSubViewsAndShowsTheOldOneAgain) {
    const auto first = manager_->controllers.at("HNMphotoViewController")->view();
    click(top(kVideos));
    EXPECT_EQ(first->superview(), nullptr);
    click(top(kPhotos));   // its leaf is not the selected one any more
    EXPECT_EQ(manager_->controllers.at("HNMphotoViewController")->view(), first);
    EXPECT_EQ(first->frame(), manager_->dataShowContentView.lock()->bounds());
    EXPECT_EQ(manager_->controllers.size(), 2U);
}

TEST_F(CategoryTree, theEmptyAreaAndTheKeyboardKeepTheSelection) {
    click(top(kContacts));
    const std::string before = rows();
    const NSPoint below = outline_->convertPoint_toView({20, outline_->bounds().maxY() - 1}, nullptr);
    window_->sendEvent(NSEvent::mouse(NSEventType::leftMouseDown, below));
    window_->sendEvent(NSEvent::mouse(NSEventType::leftMouseUp, below));
    window_->makeFirstResponder(outline_);
    window_->sendEvent(NSEvent::key(keycode::down));
    window_->sendEvent(NSEvent::key(keycode::up));
    EXPECT_EQ(rows(), before);
}

TEST_F(CategoryTree, theHostSelectsByItsOwnOrder) {
    struct {
        std::int64_t index;
        const char *nib;   // null: nothing happens
    } rows[] = {{9, "HNMBookMarkViewController"}, {8, "HNMBookViewController"}, {7, "HNMAppViewController"}, {6, "HNMMessageViewController"},
                {5, "HNMContactViewController"}, {4, "HNMvideoViewController"}, {3, "HNMringtonesViewController"}, {2, "HNMmusicViewController"},
                {1, "HNMAlbumViewController"}, {0, "HNMphotoViewController"}, {10, nullptr}, {-1, nullptr},
                {std::numeric_limits<std::int64_t>::min(), nullptr}};
    std::string last = shown();
    for (const auto &[index, nib] : rows) {
        EXPECT_TRUE(ActionRouter.managerEvent().selectManagerItem(index));
        EXPECT_EQ(shown(), nib ? nib : last) << "index " << index;
        last = shown();
    }
}

TEST_F(CategoryTree, aDeviceSwitchDropsEverySubViewAndStartsAnew) {
    ActionRouter.managerEvent().selectManagerItem(3);
    ActionRouter.managerEvent().selectManagerItem(5);
    object(top(kPhotos))->setItemCount(7);
    object(top(kPhotos)->childAtIndex(1))->setItemCount(5);
    EXPECT_EQ(object(top(kPhotos)->childAtIndex(1))->itemCountString.get(), "(5)");
    const std::weak_ptr<HNMbaseViewController> contacts = manager_->controllers.at("HNMContactViewController");

    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDidSwitchChangeNotification);
    EXPECT_TRUE(contacts.expired());
    EXPECT_EQ(shown(), "HNMphotoViewController");
    EXPECT_EQ(manager_->controllers.size(), 1U);
    EXPECT_EQ(rows(), kStartRows);
    EXPECT_EQ(object(top(kPhotos))->itemCount(), 7);   // only children lose their count
    EXPECT_EQ(object(top(kPhotos)->childAtIndex(1))->itemCountString.get(), "");
    EXPECT_EQ(object(top(kMusic)->childAtIndex(0))->itemCount(), -1);

    const std::weak_ptr<HNMbaseViewController> old = manager_->controllers.at("HNMphotoViewController");   // again, from the first leaf
    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDidSwitchChangeNotification);
    EXPECT_TRUE(old.expired());
    EXPECT_EQ(shown(), "HNMphotoViewController");
    EXPECT_EQ(rows(), kStartRows);
}

TEST_F(CategoryTree, aDeviceSwitchGoesInItsOrder) {
    ActionRouter.managerEvent().selectManagerItem(3);
    EventLog &log = speed_;
    const auto logColor = [&log](const std::shared_ptr<HNFileTypeObject> &node, const std::string &name) {
        node->textColor.observe([&log, name](const auto &color) {
            log.add(name + (sameColor(color, NSColor::whiteColor()) ? " highlighted" : " plain"));
        });
    };
    const auto logMark = [&log](const std::shared_ptr<HNFileTypeObject> &node, const std::string &name) {
        node->expandMarkIcon.observe([&log, name, shut = node->expandMarkIconA, open = node->expandMarkIconB](const auto &icon) {
            log.add(name + (icon == shut ? " mark shut" : icon == open ? " mark open" : " mark right"));
        });
    };
    logMark(object(top(kPhotos)), "photos");
    logMark(object(top(kMusic)), "music");
    logColor(object(top(kPhotos)->childAtIndex(0)), "camera roll");
    logColor(object(top(kMusic)->childAtIndex(1)), "ringtones");
    object(top(kMusic)->childAtIndex(1))->itemCountString.observe([&log](const NSString &count) { log.add("count '" + count.str() + "'"); });
    setLogSink([&log](const NSString &line) {
        if (line.containsString("HNMbaseViewController dealloc"))
            log.add("sub-view goes");
    });
    (void)log.take();
    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDidSwitchChangeNotification);
    EXPECT_EQ(log.take(), "sub-view goes\nsub-view goes\n"
                          "count ''\n"
                          "ringtones plain\n"
                          "photos mark shut\nphotos mark right\nmusic mark shut\nmusic mark right\n"
                          "photos mark open\ncamera roll highlighted\nslow");
}

TEST_F(CategoryTree, theNodeNeverReachesAModel) {
    NibRegistry::add("HNMAlbumViewController", [](Nib &nib) {
        const auto owner = nib.owner<HNMbaseViewController>();
        nib.setView(nib.make<NSView>(NSRect(0, 0, 100, 100)));
        const auto model = nib.make<HNMbaseViewModel>();
        const auto manager = nib.make<HNMbaseViewManager>();
        owner->viewModel = model;
        owner->viewManager = manager;
    });
    ActionRouter.managerEvent().selectManagerItem(1);
    const auto &controller = manager_->controllers.at("HNMAlbumViewController");
    ASSERT_TRUE(controller->viewModel.lock());
    EXPECT_EQ(controller->viewManager.lock()->viewModel.lock(), controller->viewModel.lock());
    EXPECT_TRUE(controller->viewModel.lock()->treeNoteItem.expired());
    NibRegistry::remove("HNMAlbumViewController");
}

TEST_F(CategoryTree, aSecondLoadGivesTheSameControllerAndASecondSetOfHooks) {
    EventLog usage;
    world_.logUsageTo(usage);
    AspectHooks::enter("HNMMessageViewManager", "exportMessage:");
    EXPECT_EQ(usage.take(), "Manage/Messages_Export\nManage/Messages_ExportFormart");
    const auto before = plugin_->mainViewController;
    EXPECT_EQ(plugin_->loadWithViewController(), before);
    AspectHooks::enter("HNMContactViewManager", "_GALogImportCard");
    AspectHooks::enter("HNMmusicViewModel", "_GAMusicImportFromFile");
    EXPECT_EQ(usage.take(), "Manage/Contacts_ImportFormat:Card\nManage/Contacts_ImportFormat:Card\n"
                            "Manage/Music_Import\nManage/Music_ImportSelectFile\nManage/Music_Import\nManage/Music_ImportSelectFile");
}

TEST_F(CategoryTree, nodesAreAddedBesideTheSelection) {
    const auto model = std::static_pointer_cast<HNFileTypeViewModel>(manager_->viewModel.lock());
    auto extra = make<HNFileTypeObject>();
    extra->fileTypeName = "FileManager_Extra";
    extra->setIsLeaf(true);
    model->addNode(extra);
    EXPECT_EQ(top(kPhotos)->childCount(), 3U);
    EXPECT_EQ(object(top(kPhotos)->childAtIndex(2)), extra);
    auto mixed = make<NSMutableArray>();
    mixed->addObject(make<NSMutableArray>());
    mixed->addObject(make<HNFileTypeObject>());
    model->addEntries_flag(mixed, true);
    model->addEntries_flag(nullptr, true);
    EXPECT_EQ(model->outlineTreeController->arrangedObjects()->childCount(), 9U);
}

// ---------------------------------------------------------------- shut-down

namespace {

class OwnDialog : public RUIDialogWindow {};
class OwnOpenPanel : public NSOpenPanel {};
class OwnSavePanel : public NSSavePanel {};

// Closes open dialogs while a panel runs, looks whether it still does, and cancels it.
class PanelWatch : public Presenter {
public:
    EventLog log;
    void panelDidOpen(NSSavePanel &panel) override {
        const auto shown = std::static_pointer_cast<NSSavePanel>(panel.shared_from_this());
        dispatch::async(dispatch::main(), [this, shown] {
            HNManagerPrincipalClass::closeOpenDialog();
            dispatch::async(dispatch::main(), [this, shown] {
                log.add(shown->isRunning() ? "stays" : "goes");
                shown->cancel();
            });
        });
    }
};

}  // namespace

TEST(OpenPanels, areCancelledByExactClassOnTheActiveSpace) {
    PluginWorld world;
    const auto watch = std::make_shared<PanelWatch>();
    Presenter::install(watch);
    const auto elsewhere = make<NSOpenPanel>();
    elsewhere->setOnActiveSpace(false);
    for (const auto &panel : std::vector<std::shared_ptr<NSSavePanel>>{make<NSOpenPanel>(), make<NSSavePanel>(), make<OwnOpenPanel>(), make<OwnSavePanel>(), elsewhere}) {
        EXPECT_EQ(panel->runModal(), kPanelCancel);
        world.settle();
    }
    Presenter::install(nullptr);
    EXPECT_EQ(watch->log.take(), "goes\ngoes\nstays\nstays\nstays");
}

TEST_F(CategoryTree, shutDownDismissesOpenDialogsByExactClass) {
    const auto dialog = make<RUIDialogWindow>();
    const auto own = make<OwnDialog>();
    const auto plain = make<NSWindow>();
    const auto elsewhere = make<RUIDialogWindow>();
    for (const auto &window : std::vector<std::shared_ptr<NSWindow>>{dialog, own, plain, elsewhere})
        window->orderFront();
    elsewhere->setOnActiveSpace(false);

    HNManagerPrincipalClass::closeOpenDialog();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(own->isVisible() && plain->isVisible() && elsewhere->isVisible());
}

TEST(PlugInEnd, dialogsStayWhereTheToolBarStandsElsewhere) {
    for (const std::int64_t item : {0, 1}) {
        PluginWorld world;
        auto plugin = make<HNManagerPrincipalClass>();
        plugin->loadWithViewController();
        const std::weak_ptr<NSView> view = plugin->mainViewController->view();
        const auto dialog = make<RUIDialogWindow>();
        dialog->orderFront();
        ActionRouter.toolBarEvent().setSelectItem(item);
        plugin = nullptr;
        EXPECT_EQ(dialog->isVisible(), item != 1);
        EXPECT_TRUE(view.expired());
        EXPECT_FALSE(ActionRouter.managerEvent().selectManagerItem(0));
        world.settle();
    }
}

TEST(PlugInEnd, goesDownInItsOrder) {
    PluginWorld world;
    auto plugin = make<HNManagerPrincipalClass>();
    plugin->loadWithViewController();
    (void)plugin->mainViewController->view();
    EventLog log;
    setLogSink([&log](const NSString &line) {
        if (line.containsString("dealloc"))
            log.add(line.view());
    });
    plugin = nullptr;
    world.settle();
    EXPECT_EQ(log.take(), "-[HNMbaseViewController dealloc]\n"   // of the sub-view
                          "-[HNFileTypeViewManager dealloc]\n"
                          "Class dealloc HNFileTypeViewManager\n"
                          "Class dealloc HNFileTypeViewModel\n"
                          "-[HNMbaseViewController dealloc]");
}

// ---------------------------------------------------------------- toolkit versions

TEST(ToolkitVersion, initViewModelRunsOnceInEach) {
    class CountingManager : public HNMbaseViewManager {
    public:
        int runs = 0;
        void initViewModel(const std::shared_ptr<HNMbaseViewModel> &model) override {
            ++runs;
            HNMbaseViewManager::initViewModel(model);
        }
    };
    for (const double version : {1265.0, 1342.9, 1343.0, 1561.0}) {
        PluginWorld world;
        setAppKitVersionNumber(version);
        const auto manager = make<CountingManager>();
        const auto model = make<HNMbaseViewModel>();
        const auto controller = make<HNMbaseViewController>("NoSuchNib", NSBundle::bundleForClass());
        controller->viewManager = manager;
        controller->viewModel = model;
        (void)controller->view();
        EXPECT_EQ(manager->runs, 1) << version;
        EXPECT_EQ(manager->viewModel.lock(), model) << version;
    }
}

// ---------------------------------------------------------------- drawing

TEST(TreeRow, showsTheThemeColourOnlyWhenAskedAndLeftAlone) {
    PluginWorld world;
    const auto row = make<HNFileTypeTableRowView>(NSRect(0, 0, 50, 20));
    const auto paints = [&row] {
        RecordingCanvas canvas;
        row->displaySelf(canvas);
        return canvas.take().find("fill") != std::string::npos;
    };
    EXPECT_FALSE(paints());
    row->setWantsCustomColor(true);
    EXPECT_TRUE(paints());
    row->setSelectedColor(nullptr);
    row->setSelected(true);
    EXPECT_FALSE(paints());
}
