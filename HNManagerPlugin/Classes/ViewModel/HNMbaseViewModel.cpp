#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

#include <algorithm>
#include <unordered_set>

#include "HNManagerPlugin/Classes/PublicProgressWindow/DeviceFilePreview.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/MessageDialog.h"
#include "toolkit/dispatch/Synchronized.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSLog.h"

HN_CLASS_TABLE(HNMbaseViewModel, RVBaseImageBrowserViewModel,
               .key("contents", &HNMbaseViewModel::contents)
               .key("globalArray", &HNMbaseViewModel::globalArray)
               .key("selectInfoDic", &HNMbaseViewModel::selectInfoDic)
               .key("arrayController", &HNMbaseViewModel::arrayController)
               .key("totalItemCount", &HNMbaseViewModel::totalItemCount)
               .key("outlineTreeController", &HNMbaseViewModel::outlineTreeController)
               .selector("reloadData", &HNMbaseViewModel::reloadData))

void HNMbaseViewModel::init() {
    RVBaseImageBrowserViewModel::init();
    const dispatch::Synchronized once(this);
    if (contents)
        return;
    contents = make<NSMutableArray>();
    globalArray = make<NSMutableArray>();
    selectInfoDic = make<NSMutableDictionary>();
    outlineTreeController = make<NSTreeController>();
}

void HNMbaseViewModel::dealloc() {
    NSLog("Class dealloc %@", className());
    RVBaseImageBrowserViewModel::dealloc();
}

// ---------------------------------------------------------------- lists

void HNMbaseViewModel::removeModels(const NSArray &models) {
    if (!contents->isEmpty())
        contents->removeObjectsInArray(models);
}

void HNMbaseViewModel::removeModelAtIndexes(const NSIndexSet &indexes) {
    if (!indexes.isEmpty() && indexes.lastIndex() < contents->count())
        contents->removeObjectsAtIndexes(indexes);
}

void HNMbaseViewModel::removeModelAtIndex(std::size_t index) { contents->removeObjectAtIndex(index); }

id HNMbaseViewModel::modelAtIndex(std::size_t index) const { return contents->objectAtIndex(index); }

std::int64_t HNMbaseViewModel::indexForModel(const id &model) const {
    const std::size_t index = contents->indexOfObject(model);
    return index == NSNotFound ? -1 : static_cast<std::int64_t>(index);
}

void HNMbaseViewModel::sortContentsArrayWithKey_ascending(const NSString &key, bool ascending) {
    const NSSortDescriptors order = {NSSortDescriptor(key, ascending)};
    contents->sortUsingDescriptors(order);
    globalArray->sortUsingDescriptors(order);
}

void HNMbaseViewModel::removeMusicFromSource(const NSArray &objects) {
    tell(arrayController, [&](NSArrayController &controller) { controller.removeObjects(objects); });
    globalArray->removeObjectsInArray(objects);
}

// ---------------------------------------------------------------- search

NSString HNMbaseViewModel::identifierOfRow(const id &row) const { return row ? row->valueForKey("identifier").text() : NSString(); }

// Rows stand in the order of the list, not in that of memory: each is asked for a little before its turn.
template <class Visit> void HNMbaseViewModel::visitIdentifiers(const NSArray &rows, Visit &&visit) const {
    constexpr std::size_t kRow = 16, kIdentifier = 8;
    for (std::size_t at = 0; at < rows.count(); ++at) {
        __builtin_prefetch(rows[at + kRow].get());
        if (const id &soon = rows[at + kIdentifier])
            prefetchIdentifier(*soon);
        visit(rows[at], identifierOfRow(rows[at]));
    }
}

void HNMbaseViewModel::removeKeyAtSearchSelectedArray() {
    const auto controller = arrayController.lock();
    const NSArray rows = contents->snapshot();
    if (controller && controller->selectionIndexes().count() == rows.count() && controller->arrangedObjects() == rows)
        return;
    std::unordered_set<NSString> unselected;   // all that may be forgotten: the keys on show or the remembered ones, the fewer
    if (rows.count() < selectInfoDic->count())
        visitIdentifiers(rows, [&](const id &, NSString key) { unselected.insert(std::move(key)); });
    else
        for (NSString &key : selectInfoDic->allKeys())
            unselected.insert(std::move(key));
    if (controller && !unselected.empty())
        visitIdentifiers(controller->selectedObjects(), [&](const id &, const NSString &key) { unselected.erase(key); });
    if (unselected.empty())
        return;
    std::vector<NSString> forgotten;
    visitIdentifiers(rows, [&](const id &, NSString key) {
        if (unselected.contains(key))
            forgotten.push_back(std::move(key));
    });
    selectInfoDic->removeObjectsForKeys(forgotten);
}

bool HNMbaseViewModel::searchRows(const NSString &text, const RowTest &matches) {
    removeKeyAtSearchSelectedArray();
    if (text.isEmpty()) {
        if (contents->count() == globalArray->count())
            return true;
        showRows(globalArray->snapshot());
    } else {
        const NSArray all = globalArray->snapshot();
        std::vector<const id *> found;
        for (const id &row : all)
            if (matches(row))
                found.push_back(&row);
        if (found.empty())
            return false;
        NSArray::Items rows;
        rows.reserve(found.size());
        if (found.size() < all.count())
            for (const id *row : found)
                rows.push_back(*row);
        showRows(rows.empty() ? all : NSArray(std::move(rows)));
    }
    restoreSelection();
    return true;
}

void HNMbaseViewModel::showRows(const NSArray &rows) {
    const auto controller = arrayController.lock();
    contents->removeAllObjects();
    if (controller)
        controller->rearrangeObjects();
    contents->setArray(rows);
    if (controller)
        controller->rearrangeObjects();
}

void HNMbaseViewModel::restoreSelection() {
    NSArray::Items selected;
    if (selectInfoDic->count() > 0)
        visitIdentifiers(contents->snapshot(), [&](const id &row, const NSString &key) {
            if (selectInfoDic->containsKey(key))
                selected.push_back(row);
        });
    tell(arrayController, [&](NSArrayController &controller) { controller.setSelectedObjects(NSArray(std::move(selected))); });
}

void HNMbaseViewModel::rememberSelection() {
    tell(arrayController, [&](NSArrayController &controller) {
        std::int64_t position = 0;
        for (const id &row : controller.selectedObjects())
            selectInfoDic->setObject_forKey(Value(position++), identifierOfRow(row));
    });
}

// ---------------------------------------------------------------- helpers

namespace {

// The hex number at the start of two characters; 0 where there is none.
double hexPair(const NSString &text, std::size_t at) {
    int value = 0;
    for (std::size_t i = at; i < at + 2; ++i) {
        const char32_t c = text.characterAtIndex(i);
        const int digit = c >= '0' && c <= '9' ? static_cast<int>(c - '0')
                        : c >= 'a' && c <= 'f' ? static_cast<int>(c - 'a') + 10
                        : c >= 'A' && c <= 'F' ? static_cast<int>(c - 'A') + 10
                                               : -1;
        if (digit < 0)
            return 0;
        value = value * 16 + digit;
    }
    return static_cast<float>(value) / 255.0F;
}

}  // namespace

std::shared_ptr<NSColor> HNMbaseViewModel::getColorFromHexColor(const NSString &text) {
    if (text.length() < 8)
        return nullptr;
    return NSColor::colorWithCalibratedRed_green_blue_alpha(hexPair(text, 2), hexPair(text, 4), hexPair(text, 6), hexPair(text, 0));
}

bool HNMbaseViewModel::canWriteDepict(const NSString &path) {
    if (NSFileManager::isWritableFileAtPath(path))
        return true;
    MessageDialog::runWithString_defaultButton_icon(localized("HomeView_ExportPhoto_Not_Write_Disk"), localized("Button_Title_OK"), 3);
    return false;
}

NSString HNMbaseViewModel::timeFormatFromInteger_isHiddenHour(std::int64_t total, bool hidesHour) const {
    const std::int64_t seconds = total % 60, minutes = total / 60 % 60, hours = total / 3600;
    if (hidesHour && total < 3600)
        return NSString::stringWithFormat("%02ld : %02ld", seconds, minutes);
    return NSString::stringWithFormat("%02ld : %02ld : %02ld", seconds, minutes, hours);
}

void HNMbaseViewModel::openfileName_romate_fileSize_type(const NSString &name, const NSString &devicePath, std::int64_t sizeBytes,
                                                         const NSString &title) {
    DeviceFilePreview::open(name, devicePath, sizeBytes, title);
}
