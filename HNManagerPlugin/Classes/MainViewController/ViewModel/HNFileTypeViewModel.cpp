#include "HNManagerPlugin/Classes/MainViewController/ViewModel/HNFileTypeViewModel.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/PropertyList.h"

HN_CLASS_TABLE(HNFileTypeViewModel, HNMbaseViewModel, )

namespace {

NSString textOf(const Value &entry, std::string_view key) {
    const id dictionary = entry.object();
    return dictionary ? dictionary->valueForKey(key).text() : NSString();
}

NSString labelOf(const Value &entry) {
    const NSString key = textOf(entry, "fileTypeName");
    return localized(key);
}

std::shared_ptr<NSImage> picture(const NSString &name) { return NSBundle::bundleForClass()->imageForResource_ofType(name, "png"); }

std::shared_ptr<HNFileTypeObject> childNode(const Value &entry, const Value &parent) {
    auto node = make<HNFileTypeObject>();
    node->setIsLeaf(true);
    node->hiddenExpandBgColor = true;
    node->fileTypeName = labelOf(entry);
    node->nibName = textOf(entry, "xibName");
    node->textNormalColor = textOf(parent, "textNormalColor");
    node->textHighLightColor = textOf(parent, "textHighLightColor");
    node->textColor = HNMbaseViewModel::getColorFromHexColor(node->textNormalColor);
    return node;
}

std::shared_ptr<HNFileTypeObject> topLevelNode(const Value &entry) {
    auto node = make<HNFileTypeObject>();
    node->hiddenExpandBgColor = true;
    node->fileTypeName = labelOf(entry);
    node->imageA = picture(textOf(entry, "fileTypeImage"));
    node->imageB = picture(textOf(entry, "fileTypeImage_b"));
    node->textNormalColor = textOf(entry, "textNormalColor");
    node->textHighLightColor = textOf(entry, "textHighLightColor");
    node->fileTypeImage = node->imageA;
    node->nibName = textOf(entry, "xibName");
    node->setIsLeaf(false);   // also without children: such an entry acts as a leaf for clicks alone
    const id dictionary = entry.object();
    const Value children = dictionary ? dictionary->valueForKey("fileTypeNodeArray") : Value();
    if (!children.list().empty()) {
        node->expandMarkIconA = picture("icon_arrow1");
        node->expandMarkIconB = picture("icon_Dropdown_arrow");
        node->expandMarkIcon = node->expandMarkIconA;
    }
    for (const Value &child : children.list())
        node->children()->addObject(childNode(child, entry));
    return node;
}

}  // namespace

void HNFileTypeViewModel::reloadData() {
    auto nodes = make<NSMutableArray>();
    const Value list = propertyListWithContentsOfFile(NSBundle::bundleForClass()->pathForResource_ofType("FileManagerFileType", "plist"));
    for (const Value &entry : list.list())
        nodes->addObject(topLevelNode(entry));
    addEntries_flag(nodes, true);
}

void HNFileTypeViewModel::addEntries_flag(const std::shared_ptr<NSMutableArray> &entries, bool) {
    if (!entries)
        return;
    for (const id &entry : entries->snapshot())
        if (entry->isKindOf<HNFileTypeObject>())
            outlineTreeController->content()->addObject(entry);
    outlineTreeController->rearrangeObjects();
}

void HNFileTypeViewModel::addNode(const std::shared_ptr<HNFileTypeObject> &node) {
    const auto &selected = outlineTreeController->selectedNodes();
    std::shared_ptr<NSTreeNode> parent = selected.empty() ? nullptr : selected.front();
    if (parent && parent->isLeaf())
        parent = parent->parentNode();
    if (!parent || parent->indexPath().isEmpty())
        return outlineTreeController->insertObject_atArrangedObjectIndexPath(node, NSIndexPath::indexPathWithIndex(contents->count()));
    outlineTreeController->insertObject_atArrangedObjectIndexPath(node, parent->indexPath().indexPathByAddingIndex(parent->childCount()));
}
