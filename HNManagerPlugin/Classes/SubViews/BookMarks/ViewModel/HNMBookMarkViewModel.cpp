#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNMBookMarkViewModel.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/SetAsideFile.h"

using bookmarks::Node;

HN_CLASS_TABLE(HNMBookMarkViewModel, HNMbaseViewModel,
               .key("numberCouldExport", &HNMBookMarkViewModel::numberCouldExport)
                   .key("isFileWhole", &HNMBookMarkViewModel::isFileWhole)
                   .key("fileFailure", &HNMBookMarkViewModel::fileFailure)
                   .key("searchArray", &HNMBookMarkViewModel::searchArray)
                   .key("allNodeCount", &HNMBookMarkViewModel::allNodeCount)
                   .key("allLeafNodeCount", &HNMBookMarkViewModel::allLeafNodeCount)
                   .selector("searchFileByString:", &HNMBookMarkViewModel::searchFileByString))

CBookmarkManagerImpl *HNMBookMarkViewModel::device() {
    if (!bookMarkImpl)
        bookMarkImpl = GContextFactory.defaultManager()->bookMarkInterface();
    return bookMarkImpl.get();
}

std::shared_ptr<NSImage> HNMBookMarkViewModel::iconFor(bool isFolder) {
    auto &icon = isFolder ? folderIcon_ : urlIcon_;
    if (!icon)
        icon = NSBundle::bundleForClass()->imageForResource_ofType(isFolder ? "icon_list_Folder" : "icon_list_Url", "png");
    return icon;
}

// ---------------------------------------------------------------- the tree

Node HNMBookMarkViewModel::entityOf(const BookmarkDataInfo &record) {
    auto entity = make<HNBookMarkEntity>();
    entity->isFolder = record.isFolder;
    entity->position = record.position;
    entity->pKey = record.pKey;
    entity->parentKey = record.parentKey;
    entity->name = record.markName;
    entity->url = record.url;
    entity->setIsLeaf(!record.isFolder);
    entity->icon = iconFor(record.isFolder);
    return entity;
}

void HNMBookMarkViewModel::reloadData() {
    CBookmarkManagerImpl *const layer = device();
    contents->removeAllObjects();
    if (searchArray)
        searchArray->removeAllObjects();
    else
        searchArray = make<NSMutableArray>();
    Nodes flat;
    if (layer)
        for (const auto &record : layer->roadBookMarkData())
            if (record)
                flat.push_back(entityOf(*record));
    globalArray->removeAllObjects();
    const NSArray top = NSArray::of(bookmarks::synthesize(flat, &keysAreUnique_));
    contents->setArray(top);
    globalArray->setArray(top);
    contents->sortUsingDescriptors({NSSortDescriptor("name", true)});
    dispatch::async(dispatch::main(), [self = weakOf(this)] {
        tell(self, [](HNMBookMarkViewModel &model) {
            if (!model.outlineTreeController->content()->isEmpty())   // a second load began while this one ran
                model.resetDataContents();
            model.setUpOutlineViewTreeNode();
        });
    });
}

std::int64_t HNMBookMarkViewModel::checkBookMarkicloud() {
    constexpr std::int64_t kBookmarks = 2;
    CBookmarkManagerImpl *const layer = device();
    return layer ? layer->isDeviceiCloudOpen(kBookmarks) : 0;
}

NSArray HNMBookMarkViewModel::syntheticBookMarkAndFolderUse(const NSArray &flat) {
    return NSArray::of(bookmarks::synthesize(bookmarks::nodesOf(flat)));
}

void HNMBookMarkViewModel::addLeafToFolder_folder(const Node &item, const NSArray &folder) {
    bookmarks::addLeafToFolder(item, bookmarks::nodesOf(folder));
}

void HNMBookMarkViewModel::addEntries_flag(const Value &object, bool) {
    const auto &tree = outlineTreeController;
    const auto shared = std::dynamic_pointer_cast<NSMutableArray>(object.object());
    if (shared || object.isList()) {
        const NSArray members = shared ? shared->snapshot() : NSArray::fromList(object.list());
        NSArray::Items nodes;
        for (const id &member : members)
            if (std::dynamic_pointer_cast<RVOutlineBaseNode>(member))
                nodes.push_back(member);
        tree->content()->addObjectsFromArray(NSArray(std::move(nodes)));
        tree->setSelectionIndexPaths({});
    }
    tree->rearrangeObjects();
}

void HNMBookMarkViewModel::resetDataContents() {
    if (const auto root = treeControllerRootNode())
        root->mutableChildNodes().removeAllObjects();
    outlineTreeController->rearrangeObjects();
}

std::shared_ptr<NSTreeNode> HNMBookMarkViewModel::treeControllerRootNode() const { return outlineTreeController->arrangedObjects(); }

void HNMBookMarkViewModel::showTree(const NSArray &top) { addEntries_flag(Value(Value::List(top)), true); }

// ---------------------------------------------------------------- counts

// The objects of the top-level nodes on show; what hangs below them is in their children.
NSArray HNMBookMarkViewModel::topOfTree() const {
    NSArray::Items top;
    for (const auto &node : treeControllerRootNode()->childNodes())
        if (node->represented<HNBookMarkEntity>())
            top.push_back(node->representedObject());
    return NSArray(std::move(top));
}

std::int64_t HNMBookMarkViewModel::allNodeCount() const { return bookmarks::nodesBelow(topOfTree()); }
std::int64_t HNMBookMarkViewModel::allLeafNodeCount() const { return bookmarks::leavesBelow(topOfTree()); }
std::int64_t HNMBookMarkViewModel::countNodeLeaf(const Node &node) const { return bookmarks::leavesBelow(node->children()->snapshot()); }
std::int64_t HNMBookMarkViewModel::countOfWholeTree() const { return bookmarks::leavesBelow(contents->snapshot()); }
std::int64_t HNMBookMarkViewModel::calculateBookmarkInFolder(const Node &folder) const { return countNodeLeaf(folder); }

bool HNMBookMarkViewModel::isSelectedObj_ContainedOn(const Node &object, const NSArray &list) {
    if (!object->parentKey.isNil())
        bookmarks::walk(list, [&](const Node &entry, std::size_t) {
            containSign = containSign || entry->pKey == object->parentKey;
            return !containSign;
        });
    return containSign;
}

// The same answers as asking isSelectedObj_ContainedOn for each object, by one walk over the selection.
std::int64_t HNMBookMarkViewModel::calculateSelectedBookmarks() {
    containSign = false;
    const NSArray selection = selectedObjects();
    std::unordered_set<const HNBookMarkEntity *> seen;
    std::unordered_set<NSString> keys;
    bookmarks::walk(selection, [&](const Node &node, std::size_t) {
        const bool isNew = seen.insert(node.get()).second;
        if (isNew)
            keys.insert(node->pKey);
        return isNew;
    });
    std::int64_t count = 0;
    for (const Node &object : bookmarks::nodesOf(selection)) {
        containSign = !object->parentKey.isNil() && keys.contains(object->parentKey);
        if (!containSign)
            count += object->isLeaf() ? 1 : calculateBookmarkInFolder(object);
    }
    return count;
}

NSArray HNMBookMarkViewModel::selectedObjects() const { return outlineTreeController->selectedObjects(); }
NSTreeNodes HNMBookMarkViewModel::selectedNodes() const { return outlineTreeController->selectedNodes(); }

bool HNMBookMarkViewModel::allSelectObjectsIsFolder() const {
    return std::ranges::none_of(bookmarks::nodesOf(selectedObjects()), [](const Node &node) { return node->isLeaf(); });
}

bool HNMBookMarkViewModel::allSelectObjectsIsBookMark() const {
    return std::ranges::all_of(bookmarks::nodesOf(selectedObjects()), [](const Node &node) { return node->isLeaf(); });
}

// ---------------------------------------------------------------- search

Node HNMBookMarkViewModel::copyOf(const HNBookMarkEntity &entity) {
    auto copy = make<HNBookMarkEntity>();
    copy->isFolder = entity.isFolder;
    copy->position = entity.position;
    copy->pKey = entity.pKey;
    copy->parentKey = entity.parentKey;
    copy->name = entity.name;
    copy->url = entity.url;
    copy->setIsLeaf(entity.isLeaf());
    copy->icon = iconFor(entity.isFolder);
    return copy;
}

bool HNMBookMarkViewModel::searchFileByString(const NSString &text) {
    if (!searchArray)
        searchArray = make<NSMutableArray>();
    if (text.isEmpty()) {
        if (searchArray->isEmpty())
            return true;
        searchArray->removeAllObjects();
        resetDataContents();
        addEntries_flag(Value(contents), true);
        return true;
    }
    bookmarks::Hits hits =
        bookmarks::search(contents->snapshot(), text, keysAreUnique_, [this](const HNBookMarkEntity &node) { return copyOf(node); });
    searchArray->setArray(NSArray::Items(std::make_move_iterator(hits.found.begin()), std::make_move_iterator(hits.found.end())));
    if (searchArray->isEmpty())
        return false;
    foundTree_ = std::move(hits.tree);
    reloadSearchData();
    return true;
}

// A search has the tree of what it found at hand already.
void HNMBookMarkViewModel::reloadSearchData() {
    resetDataContents();
    const auto found = std::exchange(foundTree_, std::nullopt);
    showTree(found ? NSArray::of(*found) : syntheticBookMarkAndFolderUse(searchArray->snapshot()));
}

// ---------------------------------------------------------------- the device

std::shared_ptr<BookmarkDataInfo> HNMBookMarkViewModel::getBookMarkDataInfo(const Node &entity) const {
    auto record = make<BookmarkDataInfo>();
    record->pKey = entity->pKey;
    record->markName = entity->name;
    record->url = entity->url;
    record->parentKey = entity->parentKey;
    record->position = entity->position;
    return record;
}

namespace {

// The key of the parent for what is added at this object.
NSString parentAt(const HNBookMarkEntity &object) {
    if (!object.isLeaf())
        return object.pKey;
    return object.parentKey.isNil() ? NSString("") : object.parentKey;
}

template <class Made> std::map<NSString, Made> forEachParent(const NSArray &selection, const Made &made) {
    std::map<NSString, Made> entries;
    for (const Node &object : bookmarks::nodesOf(selection))
        entries[parentAt(*object)] = made;
    if (selection.isEmpty())
        entries[NSString("")] = made;
    return entries;
}

}   // namespace

CBookmarkManagerImpl::NewFolders HNMBookMarkViewModel::filterPkey_withFolderName(const NSArray &selection, const NSString &name) const {
    return forEachParent(selection, name);
}

CBookmarkManagerImpl::NewBookmarks HNMBookMarkViewModel::filterPkey_withBookMarkName_URL(const NSArray &selection,
                                                                                        const NSString &name,
                                                                                        const NSString &url) const {
    return forEachParent(selection, BookmarkNameAndURL{name, url});
}

bool HNMBookMarkViewModel::addNewBookMark_URL(const NSString &name, const NSString &url) {
    CBookmarkManagerImpl *const layer = device();
    return layer && layer->addBookMark(filterPkey_withBookMarkName_URL(selectedObjects(), name, url));
}

bool HNMBookMarkViewModel::addNewBookMarkFolder(const NSString &name) {
    CBookmarkManagerImpl *const layer = device();
    return layer && layer->addBookMarkFolder(filterPkey_withFolderName(selectedObjects(), name));
}

Node HNMBookMarkViewModel::firstSelected() const { return std::dynamic_pointer_cast<HNBookMarkEntity>(selectedObjects().firstObject()); }

bool HNMBookMarkViewModel::editBookMark() {
    CBookmarkManagerImpl *const layer = device();
    const Node entity = firstSelected();
    return layer && entity && layer->editBookMark(getBookMarkDataInfo(entity));
}

bool HNMBookMarkViewModel::editBookMarkFolder() {
    CBookmarkManagerImpl *const layer = device();
    const Node entity = firstSelected();
    return layer && entity && layer->editBookMarkFolder(getBookMarkDataInfo(entity));
}

void HNMBookMarkViewModel::moveBookMarkToParentKeyNode_callBack(const Node &target,
                                                                const CBookmarkManagerImpl::MoveProgress &callBack) {
    std::vector<NSString> keys;
    dispatch::sync(dispatch::main(), [&] {
        for (const Node &object : bookmarks::nodesOf(selectedObjects()))
            keys.push_back(object->pKey);
    });
    if (CBookmarkManagerImpl *const layer = target ? device() : nullptr)
        layer->moveBookMark_childrenKey_callBack(target->pKey, keys, callBack);
}

// ---------------------------------------------------------------- delete

namespace {

// All bookmarks below the folder, and the folders below it that have children and could be taken whole. The budget counts
// bookmarks; each folder has its own copy of what its parent had left when it was met. False where it did not suffice.
bool addBookmarkPkeyInto(CBookmarkManagerImpl::Keys &keys, const Node &folder, std::int64_t budget) {
    struct Level {
        Node folder;
        NSArray children;
        std::size_t next;
        std::int64_t budget;
    };
    std::vector<Level> open;
    open.push_back({folder, folder->children()->snapshot(), 0, budget});
    for (;;) {
        Level &level = open.back();
        const bool isWhole = level.next == level.children.count();
        const Node child = std::dynamic_pointer_cast<HNBookMarkEntity>(level.children[level.next]);
        if (isWhole || (child->isLeaf() && level.budget == 0)) {
            if (open.size() == 1)
                return isWhole;
            if (isWhole)
                keys[level.folder->pKey] = level.folder->pKey;
            open.pop_back();
            continue;
        }
        ++level.next;
        if (child->isLeaf()) {
            keys[child->pKey] = child->pKey;
            --level.budget;
        } else if (!child->children()->isEmpty()) {
            open.push_back({child, child->children()->snapshot(), 0, level.budget});
        }
    }
}

}   // namespace

CBookmarkManagerImpl::Keys HNMBookMarkViewModel::keysToDelete(const NSIndexSet &rows, std::int64_t count) const {
    CBookmarkManagerImpl::Keys keys;
    const NSArray selection = selectedObjects();
    std::int64_t budget = count;
    for (std::size_t position = 0; position < rows.count(); ++position) {
        const auto object = selection.at<HNBookMarkEntity>(position);
        if (!object)
            break;
        if (object->isLeaf()) {
            keys[object->pKey] = object->pKey;
            --budget;
        } else if (addBookmarkPkeyInto(keys, object, budget)) {
            keys[object->pKey] = object->pKey;
        }
        if (budget == 0)
            break;
    }
    return keys;
}

// Whoever waits for the last item must not wait for ever where there is no device to ask: every item then fails.
void HNMBookMarkViewModel::deleteSelectedBookMarks_delectCount_callBack(const NSIndexSet &rows, std::int64_t count,
                                                                        const CBookmarkManagerImpl::DeleteProgress &callBack) {
    CBookmarkManagerImpl::Keys keys;
    dispatch::sync(dispatch::main(), [&] { keys = keysToDelete(rows, count); });
    if (CBookmarkManagerImpl *const layer = device())
        return layer->deleteBookMarkFromPkeys_callBack(keys, callBack);
    bool stop = false;
    const auto total = static_cast<std::int64_t>(keys.size());
    if (total == 0)
        callBack(-1, 0, false, &stop);
    for (std::int64_t index = 0; index < total && !stop; ++index)
        callBack(index, total, false, &stop);
}

// ---------------------------------------------------------------- the file

void HNMBookMarkViewModel::changeBookMarkObjectToHTML_html(const NSArray &nodes, std::string &html) {
    bookmarks::appendNodes(html, nodes, numberCouldExport);
}

void HNMBookMarkViewModel::exportSelectedBookMark_exportCount(const NSString &path, std::int64_t count) {
    numberCouldExport = count;
    std::string html = bookmarks::kFileHead;
    changeBookMarkObjectToHTML_html(contents->snapshot(), html);
    html += bookmarks::kFileTail;
    const std::error_code failure = bookmarks::appendToFile(path, html);
    isFileWhole = !failure;
    fileFailure = failure ? NSString(failure.message()) : NSString();
    if (!isFileWhole)
        SetAsideFile::failed(path);
}

// ---------------------------------------------------------------- the tree controller

void HNMBookMarkViewModel::addNode(const id &object) {
    const std::size_t end = treeControllerRootNode()->childCount();
    outlineTreeController->insertObject_atArrangedObjectIndexPath(object, NSIndexPath::indexPathWithIndex(end));
}

void HNMBookMarkViewModel::moveNode_toNode(const std::shared_ptr<NSTreeNode> &node, const std::shared_ptr<NSTreeNode> &folder) {
    moveNodes_toNode({node}, folder);
}

void HNMBookMarkViewModel::moveNodes_toNode(const NSTreeNodes &nodes, const std::shared_ptr<NSTreeNode> &folder) {
    outlineTreeController->moveNodes_toIndexPath(nodes, folder->indexPath().indexPathByAddingIndex(folder->childCount()));
}

void HNMBookMarkViewModel::removeNode() { outlineTreeController->remove(); }
bool HNMBookMarkViewModel::setSelectionIndexes(const NSIndexPath &path) { return outlineTreeController->setSelectionIndexPath(path); }
void HNMBookMarkViewModel::setSelectsInsertedObjects(bool selects) { outlineTreeController->setSelectsInsertedObjects(selects); }
