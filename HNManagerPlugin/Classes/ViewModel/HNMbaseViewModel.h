// One category's data: all rows as read from the device, the rows on show, and the selection that survives a search.
//
// Lists    `contents` holds the rows on show and is the content of `arrayController`; `globalArray` holds all rows,
//          whatever the search. Both are filled by `reloadData` on a background queue while the manager's
//          loadingFinished is false, and belong to the main thread otherwise: that flag is the one gate.
// Rows     have a text that names them for the session (`identifierOfRow`).
// Indexes  that are out of range are ignored, as each operation tells.
#pragma once

#include <functional>

#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseImageBrowserViewModel.h"
#include "toolkit/NSColor.h"
#include "toolkit/lists/NSArrayController.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/lists/NSMutableDictionary.h"
#include "toolkit/lists/NSTreeController.h"

class HNFileTypeObject;
class HNMbaseEntity;

class HNMbaseViewModel : public RVBaseImageBrowserViewModel {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<NSMutableArray> contents;
    std::shared_ptr<NSMutableArray> globalArray;
    std::shared_ptr<NSMutableDictionary> selectInfoDic;   // identifier to position; only the keys matter
    std::weak_ptr<NSArrayController> arrayController;     // nib outlet
    std::weak_ptr<HNFileTypeObject> treeNoteItem;
    std::int64_t totalItemCount = 0;
    std::shared_ptr<NSTreeController> outlineTreeController;

    void init() override;
    void dealloc() override;

    // ------------------------------------------------------------ what a category replaces
    // Reads the device, on a background queue; returns when the lists are filled.
    virtual void reloadData() {}
    virtual void reloadView() {}
    virtual void setupUI() {}
    virtual bool reloadRingData() { return true; }
    // Shows the rows that match `text` (already trimmed). False: none matched, nothing was changed.
    virtual bool searchFileByString(const NSString &) { return true; }
    // The selection changed: remembers it under the rows' identifiers.
    virtual void searchSelectedChanged() {}

    // ------------------------------------------------------------ lists
    // Removes each element that `contents` holds.
    void removeModels(const NSArray &models);
    // All of them or, where one lies beyond the end, none.
    void removeModelAtIndexes(const NSIndexSet &indexes);
    void removeModelAtIndex(std::size_t index);
    [[nodiscard]] id modelAtIndex(std::size_t index) const;
    // -1 where `contents` does not hold it.
    [[nodiscard]] std::int64_t indexForModel(const id &model) const;
    // Sorts both lists in place, by one key.
    void sortContentsArrayWithKey_ascending(const NSString &key, bool ascending);
    // From `contents`, through the controller, and from `globalArray`. Books, videos and ringtones use it as well.
    void removeMusicFromSource(const NSArray &objects);

    // ------------------------------------------------------------ helpers
    // "AARRGGBB"; null for a text shorter than 8 characters. A pair that is no hex number counts as 0.
    [[nodiscard]] static std::shared_ptr<NSColor> getColorFromHexColor(const NSString &text);
    // True where the path can be written; otherwise says so in a dialog. Main thread.
    [[nodiscard]] bool canWriteDepict(const NSString &path);
    // The right-to-left form: seconds, minutes, hours. The short form hides hours that are 0.
    [[nodiscard]] NSString timeFormatFromInteger_isHiddenHour(std::int64_t seconds, bool hidesHour) const;
    [[nodiscard]] NSString timeFormatFromInteger(std::int64_t seconds) const { return timeFormatFromInteger_isHiddenHour(seconds, true); }
    // Fetches a file of the device once and opens it in the system's player. Main thread.
    void openfileName_romate_fileSize_type(const NSString &name, const NSString &devicePath, std::int64_t sizeBytes, const NSString &title);

protected:
    using RowTest = std::function<bool(const id &row)>;

    // The key under which a row's selection is remembered.
    [[nodiscard]] virtual NSString identifierOfRow(const id &row) const;
    // Asks memory for what identifierOfRow reads of a row that is already there.
    virtual void prefetchIdentifier(const NSObject &) const {}
    // The search that all list categories share. `matches` is asked for each row of globalArray, in order.
    bool searchRows(const NSString &text, const RowTest &matches);
    // Rows on show that are not selected lose their memory; rows that the present filter hides keep theirs.
    void removeKeyAtSearchSelectedArray();
    // Remembers the selection; the body of a list category's searchSelectedChanged.
    void rememberSelection();

private:
    template <class Visit> void visitIdentifiers(const NSArray &rows, Visit &&visit) const;   // the row and its key
    void showRows(const NSArray &rows);
    void restoreSelection();
};
