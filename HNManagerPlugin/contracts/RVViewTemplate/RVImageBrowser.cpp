#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowser.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSScrollView.h"

HN_CLASS_TABLE(RVImageBrowser, NSView, .selector("selectAll:", &RVImageBrowser::selectAll).selector("reloadData", &RVImageBrowser::reloadData))

namespace {

// The picture's attributes as a style; what the text does not set stays as it is.
void takeStyle(TextStyle &style, const Value &value) {
    const auto text = std::dynamic_pointer_cast<NSAttributedString>(value.object());
    if (!text)
        return;
    const TextAttributes attributes = text->attributesAtIndex(0);
    if (attributes.font)
        style.font = attributes.font;
    if (attributes.color)
        style.color = attributes.color;
}

}  // namespace

void RVImageBrowser::initWithFrame(const NSRect &frame) {
    selectionColor_ = UIThemeColor();
    titleStyle_ = {NSFont::systemFontOfSize(12), NSColor::blackColor(), NSTextAlignment::center, LineBreak::truncateMiddle};
    highlightedTitleStyle_ = titleStyle_;
    NSView::initWithFrame(frame);
    addTrackingArea(make<NSTrackingArea>(NSRect(), selfOf(this)));
}

void RVImageBrowser::setDataSource(const std::shared_ptr<RVBaseImageBrowserViewModel> &model) {
    model_ = model;
    if (model)
        model->observeSelection(shared_from_this(), [self = weakOf(this)] {
            tell(self, [](RVImageBrowser &browser) { browser.selectionChanged(); });
        });
    reloadData();
}

void RVImageBrowser::reloadData() {
    const auto model = dataSource();
    items_ = model ? model->browserItems() : NSArray();
    groups_ = model ? model->browserGroups() : std::vector<RVImageBrowserGroup>();
    std::map<id, std::shared_ptr<RVImageBrowserCell>> known;
    for (auto &[row, cell] : cells_)
        known.emplace(cell->item_, cell);
    cells_.clear();
    if (!known.empty())
        for (std::size_t row = 0; row < items_.count() && cells_.size() < known.size(); ++row)
            if (const auto old = known.find(items_[row]); old != known.end())
                cells_.emplace(row, old->second);
    layOut();
    if (model)
        model->setSelectionIndexes(model->selectionIndexes().clippedTo(items_.count()));
    for (auto &[row, cell] : cells_)
        cell->isSelected_ = selectionIndexes().containsIndex(row);
    setNeedsDisplay();
}

// ---------------------------------------------------------------- places

std::size_t RVImageBrowser::numberOfColumns() const {
    const double room = bounds().size.width - 2 * kEdge + spacing_.width;
    return static_cast<std::size_t>(std::max(1.0, room / (cellSize_.width + spacing_.width)));
}

void RVImageBrowser::layOut() {
    if (isLayingOut_)
        return;
    isLayingOut_ = true;
    const auto clip = std::dynamic_pointer_cast<NSClipView>(superview());
    if (clip && clip->bounds().size.width != frame().size.width)
        setFrameSize({clip->bounds().size.width, frame().size.height});
    sections_.clear();
    const auto columns = numberOfColumns();
    double top = 0;
    const auto add = [&](std::size_t group, NSRange rows, bool hasTitle, bool isFolded) {
        const double lines = isFolded ? 0 : static_cast<double>((rows.length + columns - 1) / columns);
        const double height = (hasTitle ? kTitleHeight : kEdge) + lines * (cellSize_.height + spacing_.height);
        sections_.push_back({group, rows, top, height, hasTitle, isFolded});
        top += height;
    };
    if (groups_.empty())
        add(0, {0, items_.count()}, false, false);
    for (std::size_t i = 0; i < groups_.size(); ++i)
        add(i, groups_[i].range, true, !isGroupExpandedAtIndex(i));
    if (clip)
        setFrameSize({frame().size.width, std::max(top, clip->bounds().size.height)});
    for (auto cell = cells_.begin(); cell != cells_.end();) {
        cell->second->frame_ = itemFrameAtIndex(cell->first);
        cell = cell->second->frame_.isEmpty() ? cells_.erase(cell) : std::next(cell);
    }
    isLayingOut_ = false;
    setNeedsDisplay();
}

const RVImageBrowser::Section *RVImageBrowser::sectionOf(std::size_t row) const {
    const auto after = std::ranges::upper_bound(sections_, row, {}, [](const Section &section) { return section.rows.location; });
    if (after == sections_.begin())
        return nullptr;
    const Section &section = *std::prev(after);
    return row < section.rows.location + section.rows.length ? &section : nullptr;
}

NSRect RVImageBrowser::itemFrameAtIndex(std::size_t row) const {
    const Section *section = sectionOf(row);
    if (!section || section->isFolded)
        return {};
    const std::size_t columns = numberOfColumns(), place = row - section->rows.location;
    const double first = section->top + (section->hasTitle ? kTitleHeight : kEdge);
    return {kEdge + static_cast<double>(place % columns) * (cellSize_.width + spacing_.width),
            first + static_cast<double>(place / columns) * (cellSize_.height + spacing_.height), cellSize_.width, cellSize_.height};
}

std::size_t RVImageBrowser::indexOfItemAtPoint(NSPoint point) const {
    for (const Section &section : sections_) {
        if (point.y < section.top || point.y >= section.top + section.height || section.isFolded)
            continue;
        const double inside = point.y - section.top - (section.hasTitle ? kTitleHeight : kEdge);
        if (inside < 0 || point.x < kEdge)
            return NSNotFound;
        const auto line = static_cast<std::size_t>(inside / (cellSize_.height + spacing_.height));
        const auto column = static_cast<std::size_t>((point.x - kEdge) / (cellSize_.width + spacing_.width));
        if (column >= numberOfColumns())
            return NSNotFound;
        const std::size_t row = section.rows.location + line * numberOfColumns() + column;
        return row < section.rows.location + section.rows.length && itemFrameAtIndex(row).contains(point) ? row : NSNotFound;
    }
    return NSNotFound;
}

void RVImageBrowser::setCellSize(NSSize size) {
    cellSize_ = {std::max(size.width, 1.0), std::max(size.height, 1.0)};
    layOut();
}

void RVImageBrowser::setIntercellSpacing(NSSize spacing) {
    spacing_ = {std::max(spacing.width, 0.0), std::max(spacing.height, 0.0)};
    layOut();
}

void RVImageBrowser::expandGroupAtIndex(std::size_t group) {
    if (group >= groups_.size())
        return;
    folded_.erase(groups_[group].title);
    layOut();
}

void RVImageBrowser::collapseGroupAtIndex(std::size_t group) {
    if (group >= groups_.size())
        return;
    folded_[groups_[group].title] = true;
    layOut();
}

bool RVImageBrowser::isGroupExpandedAtIndex(std::size_t group) const {
    return group < groups_.size() && !folded_.contains(groups_[group].title);
}

void RVImageBrowser::scrollIndexToVisible(std::size_t row) {
    if (const NSRect frame = itemFrameAtIndex(row); !frame.isEmpty())
        scrollRectToVisible(frame);
}

void RVImageBrowser::frameDidChange(const NSRect &old) {
    NSView::frameDidChange(old);
    if (old.size.width != frame().size.width)
        layOut();
}

void RVImageBrowser::viewDidMoveToSuperview() {
    NSView::viewDidMoveToSuperview();
    layOut();
}

// ---------------------------------------------------------------- cells

std::shared_ptr<RVImageBrowserCell> RVImageBrowser::cellForItemAtIndex(std::size_t row) {
    const NSRect frame = itemFrameAtIndex(row);
    if (frame.isEmpty())
        return nullptr;
    if (const auto known = cells_.find(row); known != cells_.end())
        return known->second;
    std::shared_ptr<RVImageBrowserCell> cell;
    if (const auto delegate = delegate_.lock())
        cell = delegate->RVImageBrowser_newCellForRepresentedItem(*this, items_[row]);
    if (!cell)
        cell = make<RVImageBrowserCell>();
    cell->item_ = items_[row];
    cell->frame_ = frame;
    cell->isSelected_ = selectionIndexes().containsIndex(row);
    cells_[row] = cell;
    return cell;
}

void RVImageBrowser::drawRect(const NSRect &rect, Canvas &canvas) {
    static const TextStyle title{NSFont::boldSystemFontOfSize(13), NSColor::blackColor(), NSTextAlignment::left, LineBreak::truncateTail};
    std::map<std::size_t, std::shared_ptr<RVImageBrowserCell>> shown;
    for (const Section &section : sections_) {
        if (section.top > rect.maxY() || section.top + section.height < rect.minY())
            continue;
        if (section.hasTitle)
            canvas.drawText(groups_[section.group].title, {kEdge, section.top + 6, bounds().size.width - 2 * kEdge, 18}, title);
        if (section.isFolded)
            continue;
        const double first = section.top + (section.hasTitle ? kTitleHeight : kEdge), step = cellSize_.height + spacing_.height;
        const auto from = static_cast<std::size_t>(std::max(0.0, (rect.minY() - first) / step)) * numberOfColumns();
        for (std::size_t place = from; place < section.rows.length; ++place) {
            const std::size_t row = section.rows.location + place;
            if (itemFrameAtIndex(row).minY() > rect.maxY())
                break;
            if (const auto cell = cellForItemAtIndex(row)) {
                cell->draw(canvas, *this);
                shown.emplace(row, cell);
            }
        }
    }
    // Far more than a screen of cells: those out of sight go, with the pictures they hold.
    if (cells_.size() > 4 * shown.size() + 200)
        cells_ = std::move(shown);
}

bool RVImageBrowser::setValue_forKey(const Value &value, std::string_view key) {
    if (key == IKImageBrowserSelectionColorKey)
        selectionColor_ = std::dynamic_pointer_cast<NSColor>(value.object());
    else if (key == IKImageBrowserCellsTitleAttributesKey)
        takeStyle(titleStyle_, value);
    else if (key == IKImageBrowserCellsHighlightedTitleAttributesKey)
        takeStyle(highlightedTitleStyle_, value);
    else
        return NSView::setValue_forKey(value, key);
    setNeedsDisplay();
    return true;
}

// ---------------------------------------------------------------- selection

const NSIndexSet &RVImageBrowser::selectionIndexes() const {
    static const NSIndexSet none;
    const auto model = dataSource();
    return model ? model->selectionIndexes() : none;
}

void RVImageBrowser::setSelectionIndexes_byExtendingSelection(const NSIndexSet &indexes, bool extend) {
    const auto model = dataSource();
    if (!model)
        return;
    NSMutableIndexSet wanted = indexes.clippedTo(items_.count());
    if (extend)
        wanted.addIndexes(model->selectionIndexes());
    model->setSelectionIndexes(wanted);
}

void RVImageBrowser::selectAll(const id &) {
    setSelectionIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRange({0, items_.count()}), false);
}

void RVImageBrowser::selectionChanged() {
    for (auto &[row, cell] : cells_)
        cell->isSelected_ = selectionIndexes().containsIndex(row);
    noteChanged("selectionIndexes");
    if (const auto delegate = delegate_.lock())
        delegate->imageBrowserSelectionDidChange(*this);
}

void RVImageBrowser::clickSelects(std::size_t row, NSEventModifierFlags modifiers) {
    NSMutableIndexSet wanted = selectionIndexes();
    if (modifiers & NSEventModifierFlagCommand) {
        if (wanted.containsIndex(row))
            wanted.removeIndex(row);
        else
            wanted.addIndex(row);
    } else if ((modifiers & NSEventModifierFlagShift) && anchor_ != NSNotFound) {
        const std::size_t first = std::min(anchor_, row), last = std::max(anchor_, row);
        wanted.addIndexesInRange({first, last - first + 1});
        return setSelectionIndexes_byExtendingSelection(wanted, false);
    } else {
        wanted = NSIndexSet::indexSetWithIndex(row);
    }
    anchor_ = row;
    setSelectionIndexes_byExtendingSelection(wanted, false);
}

// ---------------------------------------------------------------- a person's doing

NSPoint RVImageBrowser::pointOf(const NSEvent &event) const {
    return convertPoint_fromView(event.locationInWindow, nullptr);
}

void RVImageBrowser::performClick(std::size_t row, NSEventModifierFlags modifiers, int clickCount) {
    const NSRect frame = itemFrameAtIndex(row);
    if (frame.isEmpty())
        return;
    // The lower left part: the check box stands at the upper right, the button in the middle.
    const NSPoint place = convertPoint_toView({frame.minX() + 2, frame.maxY() - 2}, nullptr);
    mouseDown(*NSEvent::mouse(NSEventType::leftMouseDown, place, clickCount, modifiers));
}

void RVImageBrowser::mouseDown(NSEvent &event) {
    const NSPoint point = pointOf(event);
    const std::size_t row = indexOfItemAtPoint(point);
    const auto delegate = delegate_.lock();
    if (row == NSNotFound) {
        for (const Section &section : sections_)
            if (section.hasTitle && point.y >= section.top && point.y < section.top + kTitleHeight)
                return section.isFolded ? expandGroupAtIndex(section.group) : collapseGroupAtIndex(section.group);
        if (!(event.modifierFlags & (NSEventModifierFlagCommand | NSEventModifierFlagShift)))
            setSelectionIndexes_byExtendingSelection({}, false);
        return;
    }
    const auto cell = cellForItemAtIndex(row);
    if (delegate && !delegate->RVImageBrowser_mouseDownCell_AtRow_mouseEvent(*this, cell, row, event))
        return;
    clickSelects(row, event.modifierFlags);
    if (event.clickCount == 2 && delegate)
        delegate->imageBrowser_cellWasDoubleClickedAtIndex(*this, row);
}

void RVImageBrowser::hover(const std::shared_ptr<RVImageBrowserCell> &cell, NSEvent &event) {
    const auto last = hovered_.lock();
    if (cell == last)
        return;
    hovered_ = cell;
    if (const auto delegate = delegate_.lock())
        delegate->RVImageBrowser_mouseDidEnteredCell_lastEnteredCell_mouseEvent(*this, cell, last, event);
}

void RVImageBrowser::mouseMoved(NSEvent &event) {
    const std::size_t row = indexOfItemAtPoint(pointOf(event));
    hover(row == NSNotFound ? nullptr : cellForItemAtIndex(row), event);
}

void RVImageBrowser::mouseExited(NSEvent &event) {
    hover(nullptr, event);
}

void RVImageBrowser::keyDown(NSEvent &event) {
    if (event.keyCode == keycode::a && event.has(NSEventModifierFlagCommand))
        return selectAll();
    const std::size_t count = items_.count();
    const NSIndexSet &selected = selectionIndexes();
    const std::size_t columns = numberOfColumns();
    const std::size_t at = anchor_ < count ? anchor_ : selected.isEmpty() ? NSNotFound : selected.lastIndex();
    std::size_t to = at;
    switch (event.keyCode) {
    case keycode::left: to = at == NSNotFound ? 0 : at - std::min<std::size_t>(at, 1); break;
    case keycode::right: to = at == NSNotFound ? 0 : at + 1; break;
    case keycode::up: to = at == NSNotFound ? 0 : at >= columns ? at - columns : at; break;
    case keycode::down: to = at == NSNotFound ? 0 : at + columns < count ? at + columns : at; break;
    default: return NSView::keyDown(event);
    }
    if (count == 0)
        return;
    to = std::min(to, count - 1);
    anchor_ = to;
    setSelectionIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(to), event.has(NSEventModifierFlagShift));
    scrollIndexToVisible(to);
}

std::shared_ptr<NSMenu> RVImageBrowser::menuForEvent(NSEvent &event) {
    const std::size_t row = indexOfItemAtPoint(pointOf(event));
    const auto delegate = delegate_.lock();
    if (!delegate)
        return nullptr;
    if (row == NSNotFound)
        return delegate->imageBrowser_menuForBackground(*this);
    if (!selectionIndexes().containsIndex(row))
        clickSelects(row, 0);
    return delegate->imageBrowser_menuForCellAtIndex(*this, row);
}

std::string RVImageBrowser::describeContent() const {
    return "items " + std::to_string(items_.count()) + " selection " + selectionIndexes().toString();
}
