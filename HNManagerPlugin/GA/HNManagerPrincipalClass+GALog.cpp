// Which operations are reported, and as what. Rows of one hook stand together, in the order in which they are sent.
#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"

namespace {

struct Event {
    const char *className, *selector;
    const char *subEvent, *secondSubEvent = nullptr;   // sent one after the other by one hook
    const char *result = nullptr;
};

constexpr int kBeforeTheBody = 2;

void send(const char *subEvent, const char *result) {
    RVProductWebLogHelper::shareInstance().asyncSendGALog_andSubEvent_withResult("Manage", subEvent, NSString(result));
}

template <std::size_t N> void install(const Event (&events)[N]) {
    for (const Event &event : events)
        AspectHooks::aspect_hookSelector_withOptions_usingBlock(event.className, event.selector, kBeforeTheBody, [&event] {
            send(event.subEvent, event.result);
            if (event.secondSubEvent)
                send(event.secondSubEvent, event.result);
        });
}

constexpr Event kPhotoEvents[] = {
    {"HNMPhotoViewModel", "onMenuItenSelectFile:", "Photo_Import", "Photo_ImportSelectFile"},
    {"HNMPhotoViewModel", "onMenuItemSelectFolder:", "Photo_Import", "Photo_ImportSelectFolder"},
    {"HNMPhotoViewModel", "_GAImportPhotoWithApp", "Photo_Import", "Photo_ImportSelectApp"},
    {"HNMPhotoViewModel", "_GAImportPhotoWithOutApp", "Photo_Import", "Photo_ImportNotSelectApp"},
    {"HNCameraRollImageBrowserController", "onDeleteButton:", "Photo_Delete"},
    {"HNCameraRollImageBrowserController", "onExportButton:", "Photo_Export"},
    {"HNMAlbumViewModel", "exportAlbum:", "Album_Export"},
    {"HNMAlbumViewModel", "onImportFromFile:", "Album_Import", "Album_ImportSelectFile"},
    {"HNMAlbumViewModel", "onImportFromFolder:", "Album_Import", "Album_ImportSelectFolder"},
    {"HNMAlbumViewModel", "importPhotoWithApp:", "Album_Import", "Album_ImportSelectApp"},
    {"HNMAlbumViewModel", "importPhotoWithOutApp:", "Album_Import", "Album_ImportNotSelectApp"},
    {"HNAlbumPhotoImageBrowserController", "_GAAlbumDeletePhoto", "Album_Photo_Delete"},
    {"HNAlbumPhotoImageBrowserController", "onMenuItemExportButton:", "Album_Photo_Export"},
};

constexpr Event kMusicEvents[] = {
    {"HNMmusicViewModel", "_GAMusicImportFromFile", "Music_Import", "Music_ImportSelectFile"},
    {"HNMmusicViewModel", "_GAMusicImportFromFolder", "Music_Import", "Music_ImportSelectFolder"},
    {"HNMmusicViewModel", "onExpertToPc:", "Music_Export"},
    {"HNMmusicViewModel", "onDeleteMediaItem:", "Music_Delete"},
    {"HNMmusicViewManager", "addNewPlayList:", "Music_NewPlaylist"},
    {"HNMringtoneViewModel", "_GARingtoneImportFromFile", "Ringtones_Import", "Ringtones_ImportSelectFile"},
    {"HNMringtoneViewModel", "_GARingtoneImportFromFolder", "Ringtones_Import", "Ringtones_ImportSelectFolder"},
    {"HNMringtoneViewModel", "_GARingtoneExportToPC", "Ringtones_Export"},
    {"HNMringtoneViewModel", "onDeleteRingtones:", "Ringtones_Delete"},
};

constexpr Event kVideoEvents[] = {
    {"HNMvideoViewModel", "_GAVideoImportFromFile", "Videos_ImportSelectFile"},
    {"HNMvideoViewModel", "_GAVideoImportFromFolder", "Videos_ImportSelectFolder"},
    {"HNMvideoViewModel", "_GAVideoExportToPC", "Videos_Export"},
    {"HNMvideoViewModel", "_GAVideoDelete", "Videos_Delete"},
    {"HNMvideoViewModel", "onPlayVideo:", "Videos_Play"},
};

constexpr Event kContactEvents[] = {
    {"HNMContactViewManager", "onNewButton:", "Contacts_NewContacts"},
    {"HNMContactViewManager", "_GALogContactImport", "Contacts_Import"},
    {"HNMContactViewManager", "_GALogContactDelete", "Contacts_Delete"},
    {"HNMContactViewManager", "duplicateClick:", "Contacts_De_Duplicate"},
    {"HNMContactViewManager", "editMenuClick:", "Contacts_Edit"},
    {"HNMContactViewManager", "_GALogImportCSV", "Contacts_ImportFormat", nullptr, "CSV"},
    {"HNMContactViewManager", "_GALogImportCard", "Contacts_ImportFormat", nullptr, "Card"},
    {"HNMContactViewManager", "exportToCSVFile:", "Contacts_ExportToFormat", nullptr, "CSV"},
    {"HNMContactViewManager", "exportTovCardFile:", "Contacts_ExportToFormat", nullptr, "Card"},
};

constexpr Event kAppsEvents[] = {
    {"HNMAppViewManager", "uninstall:", "Apps_Uninstall"},
    {"HNMAppViewManager", "uninstallButtonClick:", "Apps_Uninstall"},
};

constexpr Event kBooksEvents[] = {
    {"HNBookViewModel", "_GAiBookImportFromFile", "Books_ImportSelectFile"},
    {"HNBookViewModel", "_GAiBookImportFromFolder", "Books_ImportSelectFolder"},
    {"HNBookViewModel", "onExportToPc:", "Books_Export"},
    {"HNBookViewModel", "_GAiBookImportDelete", "Books_Delete"},
};

constexpr Event kBookMarkEvents[] = {
    {"HNMBookMarkViewManager", "_GABookMarkImport", "Bookmarks_Import"},
    {"HNMBookMarkViewManager", "_GABookMarkExport", "Bookmarks_Export"},
    {"HNMBookMarkViewManager", "_GABookMarkDelete", "Bookmarks_Delete"},
    {"HNMBookMarkViewManager", "addFolderMenuClick:", "Bookmarks_AddFolder"},
    {"HNMBookMarkViewManager", "addBookMarkMenuClick:", "Bookmarks_AddBookmarks"},
};

// exportMessage: is hooked twice.
constexpr Event kMessageEvents[] = {
    {"HNMMessageViewManager", "exportMessage:", "Messages_Export"},
    {"HNMMessageViewManager", "exportMessage:", "Messages_ExportFormart"},
    {"HNMMessageViewManager", "refreshButtonClick:", "Messages_Refresh"},
};

}  // namespace

void HNManagerPrincipalClass::installGALogHook() {
    _GALogPhotoManager();
    _GALogMusicManager();
    _GALogVideoManager();
    _GALogContactManager();
    _GALogAppsManager();
    _GALogiBooksManager();
    _GALogBookMarkManager();
    _GALogMessageManager();
}

void HNManagerPrincipalClass::_GALogPhotoManager() { install(kPhotoEvents); }
void HNManagerPrincipalClass::_GALogMusicManager() { install(kMusicEvents); }
void HNManagerPrincipalClass::_GALogVideoManager() { install(kVideoEvents); }
void HNManagerPrincipalClass::_GALogContactManager() { install(kContactEvents); }
void HNManagerPrincipalClass::_GALogAppsManager() { install(kAppsEvents); }
void HNManagerPrincipalClass::_GALogiBooksManager() { install(kBooksEvents); }
void HNManagerPrincipalClass::_GALogBookMarkManager() { install(kBookMarkEvents); }
void HNManagerPrincipalClass::_GALogMessageManager() { install(kMessageEvents); }
