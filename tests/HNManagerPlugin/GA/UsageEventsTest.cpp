// What a web log receives, event by event; its reports are counted by these names.
#include <gtest/gtest.h>

#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "tests/support/PluginWorld.h"

namespace {

struct Report {
    const char *className, *selector, *events;
};

constexpr Report kReports[] = {
    {"HNMPhotoViewModel", "onMenuItenSelectFile:", "Manage/Photo_Import\nManage/Photo_ImportSelectFile"},
    {"HNMPhotoViewModel", "onMenuItemSelectFolder:", "Manage/Photo_Import\nManage/Photo_ImportSelectFolder"},
    {"HNMPhotoViewModel", "_GAImportPhotoWithApp", "Manage/Photo_Import\nManage/Photo_ImportSelectApp"},
    {"HNMPhotoViewModel", "_GAImportPhotoWithOutApp", "Manage/Photo_Import\nManage/Photo_ImportNotSelectApp"},
    {"HNCameraRollImageBrowserController", "onDeleteButton:", "Manage/Photo_Delete"},
    {"HNCameraRollImageBrowserController", "onExportButton:", "Manage/Photo_Export"},
    {"HNMAlbumViewModel", "exportAlbum:", "Manage/Album_Export"},
    {"HNMAlbumViewModel", "onImportFromFile:", "Manage/Album_Import\nManage/Album_ImportSelectFile"},
    {"HNMAlbumViewModel", "onImportFromFolder:", "Manage/Album_Import\nManage/Album_ImportSelectFolder"},
    {"HNMAlbumViewModel", "importPhotoWithApp:", "Manage/Album_Import\nManage/Album_ImportSelectApp"},
    {"HNMAlbumViewModel", "importPhotoWithOutApp:", "Manage/Album_Import\nManage/Album_ImportNotSelectApp"},
    {"HNAlbumPhotoImageBrowserController", "_GAAlbumDeletePhoto", "Manage/Album_Photo_Delete"},
    {"HNAlbumPhotoImageBrowserController", "onMenuItemExportButton:", "Manage/Album_Photo_Export"},
    {"HNMmusicViewModel", "_GAMusicImportFromFile", "Manage/Music_Import\nManage/Music_ImportSelectFile"},
    {"HNMmusicViewModel", "_GAMusicImportFromFolder", "Manage/Music_Import\nManage/Music_ImportSelectFolder"},
    {"HNMmusicViewModel", "onExpertToPc:", "Manage/Music_Export"},
    {"HNMmusicViewModel", "onDeleteMediaItem:", "Manage/Music_Delete"},
    {"HNMmusicViewManager", "addNewPlayList:", "Manage/Music_NewPlaylist"},
    {"HNMringtoneViewModel", "_GARingtoneImportFromFile", "Manage/Ringtones_Import\nManage/Ringtones_ImportSelectFile"},
    {"HNMringtoneViewModel", "_GARingtoneImportFromFolder",
     "Manage/Ringtones_Import\nManage/Ringtones_ImportSelectFolder"},
    {"HNMringtoneViewModel", "_GARingtoneExportToPC", "Manage/Ringtones_Export"},
    {"HNMringtoneViewModel", "onDeleteRingtones:", "Manage/Ringtones_Delete"},
    {"HNMvideoViewModel", "_GAVideoImportFromFile", "Manage/Videos_ImportSelectFile"},
    {"HNMvideoViewModel", "_GAVideoImportFromFolder", "Manage/Videos_ImportSelectFolder"},
    {"HNMvideoViewModel", "_GAVideoExportToPC", "Manage/Videos_Export"},
    {"HNMvideoViewModel", "_GAVideoDelete", "Manage/Videos_Delete"},
    {"HNMvideoViewModel", "onPlayVideo:", "Manage/Videos_Play"},
    {"HNMContactViewManager", "onNewButton:", "Manage/Contacts_NewContacts"},
    {"HNMContactViewManager", "_GALogContactImport", "Manage/Contacts_Import"},
    {"HNMContactViewManager", "_GALogContactDelete", "Manage/Contacts_Delete"},
    {"HNMContactViewManager", "duplicateClick:", "Manage/Contacts_De_Duplicate"},
    {"HNMContactViewManager", "editMenuClick:", "Manage/Contacts_Edit"},
    {"HNMContactViewManager", "_GALogImportCSV", "Manage/Contacts_ImportFormat:CSV"},
    {"HNMContactViewManager", "_GALogImportCard", "Manage/Contacts_ImportFormat:Card"},
    {"HNMContactViewManager", "exportToCSVFile:", "Manage/Contacts_ExportToFormat:CSV"},
    {"HNMContactViewManager", "exportTovCardFile:", "Manage/Contacts_ExportToFormat:Card"},
    {"HNMAppViewManager", "uninstall:", "Manage/Apps_Uninstall"},
    {"HNMAppViewManager", "uninstallButtonClick:", "Manage/Apps_Uninstall"},
    {"HNBookViewModel", "_GAiBookImportFromFile", "Manage/Books_ImportSelectFile"},
    {"HNBookViewModel", "_GAiBookImportFromFolder", "Manage/Books_ImportSelectFolder"},
    {"HNBookViewModel", "onExportToPc:", "Manage/Books_Export"},
    {"HNBookViewModel", "_GAiBookImportDelete", "Manage/Books_Delete"},
    {"HNMBookMarkViewManager", "_GABookMarkImport", "Manage/Bookmarks_Import"},
    {"HNMBookMarkViewManager", "_GABookMarkExport", "Manage/Bookmarks_Export"},
    {"HNMBookMarkViewManager", "_GABookMarkDelete", "Manage/Bookmarks_Delete"},
    {"HNMBookMarkViewManager", "addFolderMenuClick:", "Manage/Bookmarks_AddFolder"},
    {"HNMBookMarkViewManager", "addBookMarkMenuClick:", "Manage/Bookmarks_AddBookmarks"},
    {"HNMMessageViewManager", "exportMessage:", "Manage/Messages_Export\nManage/Messages_ExportFormart"},
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
