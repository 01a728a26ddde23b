// What a web log receives, event by event; its reports are counted by these names.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"
#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/PluginWorld.h"

namespace {

struct Report {
    const char *className, *selector, *events;
};

// One or two of each category.
constexpr Report kReports[] = {
    {"HNMPhotoViewModel", "onMenuItenSelectFile:", "Manage/Photo_Import\nManage/Photo_ImportSelectFile"},
    {"HNAlbumPhotoImageBrowserController", "_GAAlbumDeletePhoto", "Manage/Album_Photo_Delete"},
    {"HNMmusicViewModel", "onExpertToPc:", "Manage/Music_Export"},
    {"HNMringtoneViewModel", "_GARingtoneImportFromFolder", "Manage/Ringtones_Import\nManage/Ringtones_ImportSelectFolder"},
    {"HNMvideoViewModel", "onPlayVideo:", "Manage/Videos_Play"},
    {"HNMContactViewManager", "_GALogImportCSV", "Manage/Contacts_ImportFormat:CSV"},
    {"HNMAppViewManager", "uninstallButtonClick:", "Manage/Apps_Uninstall"},
    {"HNBookViewModel", "_GAiBookImportDelete", "Manage/Books_Delete"},
    {"HNMBookMarkViewManager", "addBookMarkMenuClick:", "Manage/Bookmarks_AddBookmarks"},
    {"HNMMessageViewManager", "refreshButtonClick:", "Manage/Messages_Refresh"},
};

}   // namespace

TEST(UsageEvents, areSentByTheirOperations) {
    PluginWorld world;
    EventLog usage;
    make<HNManagerPrincipalClass>()->installGALogHook();
    world.logUsageTo(usage);
    for (const Report &report : kReports) {
        AspectHooks::enter(report.className, report.selector);
        EXPECT_EQ(usage.take(), report.events) << report.className << " " << report.selector;
    }
    AspectHooks::enter("HNMContactViewManager", "onImportButton:");
    EXPECT_EQ(usage.take(), "");
}

// Each operation that stands enters its point before its body, whatever becomes of it.
TEST(UsageEvents, comeBeforeTheOperationsOfContactsAndMessages) {
    PluginWorld world;
    AnswerScript answers;
    EventLog usage;
    make<HNManagerPrincipalClass>()->installGALogHook();
    world.logUsageTo(usage);
    const auto contacts = make<HNMContactViewManager>();
    const auto messages = make<HNMMessageViewManager>();
    const auto told = [&](NSObject &manager, const char *selector) {
        manager.perform(selector, {Value()});
        world.settle();
        return usage.take();
    };
    EXPECT_EQ(told(*messages, "exportMessage:"), "Manage/Messages_Export\nManage/Messages_ExportFormart");
    EXPECT_EQ(told(*messages, "exportMessage2HTML:"), "");
    EXPECT_EQ(told(*contacts, "editMenuClick:"), "Manage/Contacts_Edit");
    answers.at("ContactView_BeforeMerge").closeByTitleBar();
    EXPECT_EQ(told(*contacts, "duplicateClick:"), "Manage/Contacts_De_Duplicate");
    answers.savePanel().cancel();
    EXPECT_EQ(told(*contacts, "exportToCSVFile:"), "Manage/Contacts_ExportToFormat:CSV");
    answers.savePanel().cancel();
    EXPECT_EQ(told(*contacts, "exportTovCardFile:"), "Manage/Contacts_ExportToFormat:Card");
    EXPECT_EQ(told(*contacts, "onNewButton:"), "Manage/Contacts_NewContacts");
}
