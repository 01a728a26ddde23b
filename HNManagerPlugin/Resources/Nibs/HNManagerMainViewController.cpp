// The main view: the tree of categories at the left, the container of the chosen one at the right.
#include "HNManagerPlugin/Classes/MainViewController/HNManagerMainViewController.h"
#include "HNManagerPlugin/Classes/MainViewController/OutlineView/HNFileTypeOutlineView.h"
#include "HNManagerPlugin/Classes/MainViewController/ViewManager/HNFileTypeViewManager.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/NSFont.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NibRegistry.h"

namespace {

constexpr double kTreeWidth = 200, kWidth = 1200, kHeight = 660;
constexpr double kIcon = 20, kMark = 12, kRow = 40;

// A cell of the tree: icon, label, count, and the mark of a group.
std::shared_ptr<NSView> makeTreeCell() {
    auto cell = make<HNFileTypeOutTableCellView>();
    cell->setIdentifier("HNFileTypeOutline");
    cell->setFrame({0, 0, kTreeWidth, kRow});

    auto icon = make<NSImageView>(NSRect(14, (kRow - kIcon) / 2, kIcon, kIcon));
    icon->setIdentifier("TreeIcon");
    auto label = NSTextField::labelWithString("");
    label->setIdentifier("TreeLabel");
    label->setFont(NSFont::fontWithName_size("HelveticaNeue", 13));
    label->setLineBreakMode(LineBreak::truncateTail);
    auto button = make<NSButton>(NSRect(kTreeWidth - 34, (kRow - kMark) / 2, kMark, kMark));
    button->setIdentifier("TreeMark");
    button->setBordered(false);
    button->setImagePosition(NSCellImagePosition::imageOnly);
    button->setAccessibilityName(localized("FileManager_OpenGroup"));
    for (const std::shared_ptr<NSView> &view : {std::shared_ptr<NSView>(icon), std::shared_ptr<NSView>(label), std::shared_ptr<NSView>(button)})
        cell->addSubview(view);
    cell->setTextField(label);
    cell->setImageView(icon);
    cell->expandButton = button;
    return cell;
}

// Shows a node in a cell; the bindings end when the cell goes on to another node.
void showNode(NSTableCellView &cell) {
    const auto node = std::dynamic_pointer_cast<NSTreeNode>(cell.objectValue().object());
    const auto object = node ? node->represented<HNFileTypeObject>() : nullptr;
    if (!object)
        return;
    const std::weak_ptr<HNFileTypeOutTableCellView> weak = std::static_pointer_cast<HNFileTypeOutTableCellView>(cell.shared_from_this());
    const auto whileShown = [weak, shown = std::weak_ptr(node)](auto apply) {
        return [weak, shown, apply](const auto &) {
            const auto cell = weak.lock();
            const auto node = shown.lock();
            if (cell && node && cell->objectValue().object() == node)
                apply(*cell, *node->template represented<HNFileTypeObject>());
        };
    };
    const auto showText = whileShown([](NSTableCellView &c, HNFileTypeObject &o) {
        const NSString count = o.itemCountString.get();
        c.textField()->setStringValue(count.isEmpty() ? o.fileTypeName.get() : NSString(o.fileTypeName.get().str() + " " + count.str()));
    });
    object->fileTypeName.observe(showText);
    object->itemCountString.observe(showText);
    object->fileTypeImage.observe(whileShown([](NSTableCellView &c, HNFileTypeObject &o) { c.imageView()->setImage(o.fileTypeImage); }));
    // An entry that nobody has chosen yet has no colour of its own and looks as one that is chosen no more.
    object->textColor.observe(whileShown([](NSTableCellView &c, HNFileTypeObject &o) {
        const auto color = o.textColor.get();
        c.textField()->setTextColor(color ? color : HNMbaseViewModel::getColorFromHexColor(o.textNormalColor));
    }));
    object->expandMarkIcon.observe(whileShown([](HNFileTypeOutTableCellView &c, HNFileTypeObject &o) {
        tell(c.expandButton, [&](NSButton &button) {
            button.setImage(o.expandMarkIcon);
            button.setHidden(o.expandMarkIcon.get() == nullptr);
        });
    }));
    const double left = object->isLeaf() ? 44 : 42;
    cell.imageView()->setHidden(object->isLeaf());
    cell.textField()->setFrame({left, 10, kTreeWidth - left - 40, 20});
}

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("ManagerView");

    const auto outline = nib.make<HNFileTypeOutlineView>();
    outline->setIdentifier("CategoryTree");
    outline->setAccessibilityName(localized("FileManager_Categories"));
    outline->setHeaderView(nullptr);
    outline->setRowHeight(kRow);
    outline->setIntercellSpacing({0, 0});
    outline->setIndentationPerLevel(0);
    auto column = make<NSTableColumn>(NSString("HNFileTypeOutline"));
    column->setWidth(kTreeWidth);
    outline->addTableColumn(column);
    outline->registerMaker_forIdentifier(
        [] {
            auto cell = makeTreeCell();
            static_cast<NSTableCellView &>(*cell).objectValueDidChange = showNode;
            return cell;
        },
        "HNFileTypeOutline");

    const auto scroll = nib.make<NSScrollView>(NSRect(0, 0, kTreeWidth, kHeight));
    scroll->setDocumentView(outline);
    const auto container = nib.make<NSView>(NSRect(kTreeWidth, 0, kWidth - kTreeWidth, kHeight));
    container->setIdentifier("CategoryView");
    const auto content = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    content->setIdentifier("ManagerContent");
    for (const std::shared_ptr<NSView> &view : {std::shared_ptr<NSView>(scroll), std::shared_ptr<NSView>(container)}) {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        content->addSubview(view);
        content->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::top, content, NSLayoutAttribute::top));
        content->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::bottom, content, NSLayoutAttribute::bottom));
    }
    scroll->addConstraint(NSLayoutConstraint::tie(scroll, NSLayoutAttribute::width, nullptr, NSLayoutAttribute::notAnAttribute, kTreeWidth));
    content->addConstraint(NSLayoutConstraint::tie(scroll, NSLayoutAttribute::leading, content, NSLayoutAttribute::leading));
    content->addConstraint(NSLayoutConstraint::tie(container, NSLayoutAttribute::leading, scroll, NSLayoutAttribute::trailing));
    content->addConstraint(NSLayoutConstraint::tie(container, NSLayoutAttribute::trailing, content, NSLayoutAttribute::trailing));
    root->addSubview(content);
    root->pinEdgesOf(content);

    const auto manager = nib.make<HNFileTypeViewManager>();
    const auto model = nib.make<HNFileTypeViewModel>();
    manager->outlineView = outline;
    manager->contentView = content;
    manager->dataShowContentView = container;
    model->outlineTreeController->setContent(make<NSMutableArray>());
    nib.setView(root);
    if (const auto owner = nib.owner<HNManagerMainViewController>()) {
        owner->viewManager = manager;
        owner->viewModel = model;
    }
}

const NibRegistry::Entry entry("HNManagerMainViewController", build);

}  // namespace
