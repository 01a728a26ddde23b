// The device's bookmarks as a tree, what of it is on show, and the operations on it that need no window.
//
// Trees    `contents` holds the top-level entities of the whole tree, sorted by name (children stay in the device's order),
//          `globalArray` the same ones. What the outline shows is the content of `outlineTreeController`: these, or after a
//          search a separate tree of copies. A search never touches `contents`.
// Threads  reloadData and the calls to the device on background queues; all else main. What of the selection a device call
//          needs is fetched on the main thread.
// Device   its interface is fetched on first need and then kept: a new device brings a new model. Without one the tree
//          stays empty and operations fail.
#pragma once

#include <optional>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CBookmarkManagerImpl.h"

class HNMBookMarkViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE
    using Node = bookmarks::Node;
    using Nodes = bookmarks::Nodes;

    std::shared_ptr<CBookmarkManagerImpl> bookMarkImpl;
    std::int64_t numberCouldExport = 0;   // bookmarks that the writer may still write
    bool isFileWhole = false;             // the last export wrote all of its file
    NSString fileFailure;                 // why it did not
    bool containSign = false;             // what isSelectedObj_ContainedOn found, until the caller clears it
    std::shared_ptr<NSMutableArray> searchArray;   // hits and their folders; null before the first load

    // ------------------------------------------------------------ the tree
    void reloadData() override;
    // Not 0 while the bookmarks are kept in the cloud. Asks the device; blocks.
    [[nodiscard]] std::int64_t checkBookMarkicloud();
    [[nodiscard]] NSArray syntheticBookMarkAndFolderUse(const NSArray &flat);
    void addLeafToFolder_folder(const Node &item, const NSArray &folder);
    // The flag is ignored; kept: callers of old pass it.
    void addEntries_flag(const Value &object, bool flag);
    void setUpOutlineViewTreeNode() { addEntries_flag(Value(contents), true); }
    // The outline shows nothing any more; contents stay.
    void resetDataContents();
    [[nodiscard]] std::shared_ptr<NSTreeNode> treeControllerRootNode() const;

    // ------------------------------------------------------------ counts, of what is on show
    [[nodiscard]] std::int64_t allNodeCount() const;
    [[nodiscard]] std::int64_t allLeafNodeCount() const;
    [[nodiscard]] std::int64_t countNodeLeaf(const Node &node) const;
    // Bookmarks in `contents`, whatever is on show.
    [[nodiscard]] std::int64_t countOfWholeTree() const;
    // Bookmarks in the selection, those in selected folders of any depth included, none twice.
    [[nodiscard]] std::int64_t calculateSelectedBookmarks();
    [[nodiscard]] std::int64_t calculateBookmarkInFolder(const Node &folder) const;
    // Whether the object's parent stands in the list or below one of its members.
    bool isSelectedObj_ContainedOn(const Node &object, const NSArray &list);
    [[nodiscard]] NSArray selectedObjects() const;
    [[nodiscard]] NSTreeNodes selectedNodes() const;
    [[nodiscard]] bool allSelectObjectsIsFolder() const;
    [[nodiscard]] bool allSelectObjectsIsBookMark() const;

    // ------------------------------------------------------------ search
    bool searchFileByString(const NSString &text) override;
    void reloadSearchData();

    // ------------------------------------------------------------ the device; each blocks
    // isFolder of the record stays false, for folders too.
    [[nodiscard]] std::shared_ptr<BookmarkDataInfo> getBookMarkDataInfo(const Node &entity) const;
    bool addNewBookMark_URL(const NSString &name, const NSString &url);
    bool addNewBookMarkFolder(const NSString &name);
    // The first selected object, as it now stands in memory.
    bool editBookMark();
    bool editBookMarkFolder();
    void moveBookMarkToParentKeyNode_callBack(const Node &target, const CBookmarkManagerImpl::MoveProgress &callBack);
    // The selected objects at the rows' places. Without a device each key fails.
    void deleteSelectedBookMarks_delectCount_callBack(const NSIndexSet &rows, std::int64_t count,
                                                      const CBookmarkManagerImpl::DeleteProgress &callBack);
    // What such a delete hands over.
    [[nodiscard]] CBookmarkManagerImpl::Keys keysToDelete(const NSIndexSet &rows, std::int64_t count) const;
    // Where a new item goes: into each selected folder and beside each selected bookmark, at the top level without a
    // selection.
    [[nodiscard]] CBookmarkManagerImpl::NewFolders filterPkey_withFolderName(const NSArray &selection, const NSString &name) const;
    [[nodiscard]] CBookmarkManagerImpl::NewBookmarks filterPkey_withBookMarkName_URL(const NSArray &selection, const NSString &name,
                                                                                    const NSString &url) const;

    // ------------------------------------------------------------ the file
    // Writes the whole tree, whatever is on show or selected, up to `count` bookmarks, behind what the file holds.
    void exportSelectedBookMark_exportCount(const NSString &path, std::int64_t count);
    void changeBookMarkObjectToHTML_html(const NSArray &nodes, std::string &html);

    // ------------------------------------------------------------ the tree controller
    // To the end of the top level.
    void addNode(const id &object);
    void moveNode_toNode(const std::shared_ptr<NSTreeNode> &node, const std::shared_ptr<NSTreeNode> &folder);
    void moveNodes_toNode(const NSTreeNodes &nodes, const std::shared_ptr<NSTreeNode> &folder);
    void removeNode();
    bool setSelectionIndexes(const NSIndexPath &path);
    void setSelectsInsertedObjects(bool selects);

private:
    [[nodiscard]] CBookmarkManagerImpl *device();
    [[nodiscard]] std::shared_ptr<NSImage> iconFor(bool isFolder);
    [[nodiscard]] Node entityOf(const BookmarkDataInfo &record);
    [[nodiscard]] Node copyOf(const HNBookMarkEntity &entity);
    void showTree(const NSArray &top);
    [[nodiscard]] NSArray topOfTree() const;
    [[nodiscard]] Node firstSelected() const;

    std::shared_ptr<NSImage> folderIcon_, urlIcon_;   // one for all rows
    std::optional<Nodes> foundTree_;                  // between a search and its showing
    bool keysAreUnique_ = false;                      // in the tree of `contents`
};
