#include "toolkit/tables/NSTableView.h"

#include <algorithm>

#include "toolkit/tables/RowSets.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSWindow.h"
#include "toolkit/views/Presenter.h"

using rowSets::one, rowSets::range;

std::int64_t NSTableView::selectedRow() const {
    if (isRowSelected(lead_))
        return lead_;
    return selected_.isEmpty() ? -1 : static_cast<std::int64_t>(selected_.lastIndex());
}

void NSTableView::markSelection(const NSIndexSet &rows, bool push) {
    selected_ = rows;
    const auto views = rowViews_;
    for (const auto &[row, view] : views)
        view->setSelected(isRowSelected(row));
    if (push)
        pushSelection();
    noteChanged("selectedRowIndexes", false);
}

void NSTableView::takeSelection(const NSIndexSet &rows, bool push) {
    const NSIndexSet wanted = rows.clippedTo(heights_.count());
    if (wanted == selected_)
        return;
    NSMutableIndexSet added(wanted);
    added.removeIndexes(selected_);
    if (!added.isEmpty())
        lead_ = static_cast<std::int64_t>(added.lastIndex());
    markSelection(wanted, push);
    tellSelectionDidChange();
}

void NSTableView::shiftSelection(const NSIndexSet &rows, bool push) {
    const bool haveGone = rows.count() != selected_.count();
    if (rows != selected_)
        markSelection(rows, push);
    if (haveGone)
        tellSelectionDidChange();
}

void NSTableView::selectRowIndexes_byExtendingSelection(const NSIndexSet &rows, bool extend) {
    assertMain("NSTableView selectRowIndexes:byExtendingSelection:");
    NSMutableIndexSet wanted(rows.clippedTo(heights_.count()));
    if (wanted.isEmpty() && (extend || !allowsEmpty_))
        return;
    if (!allowsMultiple_ && wanted.count() > 1)
        wanted = one(static_cast<std::int64_t>(wanted.lastIndex()));
    const std::int64_t last = wanted.isEmpty() ? -1 : static_cast<std::int64_t>(wanted.lastIndex());
    if (extend && allowsMultiple_)
        wanted.addIndexes(selected_);
    anchor_ = last;
    takeSelection(wanted, true);
    lead_ = last;
}

void NSTableView::deselectRow(std::int64_t row) {
    assertMain("NSTableView deselectRow:");
    NSMutableIndexSet rest(selected_);
    rest.removeIndexes(one(row));
    takeSelection(rest, true);
}

void NSTableView::deselectAll(const id &) {
    assertMain("NSTableView deselectAll:");
    if (allowsEmpty_)
        takeSelection({}, true);
}

void NSTableView::selectAll(const id &) {
    assertMain("NSTableView selectAll:");
    if (allowsMultiple_ && numberOfRows() > 0)
        takeSelection(range(0, numberOfRows() - 1), true);
}

void NSTableView::proposeSelection(const NSIndexSet &proposed, std::int64_t lead) {
    if (!askSelectionShouldChange())
        return;
    const NSIndexSet wanted = !allowsMultiple_ && proposed.count() > 1 ? one(lead) : proposed;
    const NSIndexSet answer = askProposedSelection(wanted).clippedTo(heights_.count());
    if (answer.isEmpty() && !allowsEmpty_)
        return;
    takeSelection(answer, true);
    if (isRowSelected(lead))
        lead_ = lead;
}

// ---------------------------------------------------------------- a person's doing

void NSTableView::clickSelects(std::int64_t row, NSEventModifierFlags modifiers) {
    const bool toggles = (modifiers & NSEventModifierFlagCommand) != 0, extends = (modifiers & NSEventModifierFlagShift) != 0;
    if (row < 0) {
        if (!toggles && !extends)
            proposeSelection({}, -1);
        return;
    }
    if (extends && allowsMultiple_ && anchor_ >= 0)
        return proposeSelection(range(anchor_, row), row);
    NSIndexSet proposed = one(row);
    if (toggles) {
        NSMutableIndexSet turned(allowsMultiple_ ? selected_ : isRowSelected(row) ? one(row) : NSIndexSet());
        isRowSelected(row) ? turned.removeIndexes(one(row)) : turned.addIndexes(one(row));
        proposed = turned;
    }
    anchor_ = row;
    proposeSelection(proposed, row);
}

void NSTableView::clickActs(int clickCount) {
    if (clickCount < 2) {
        sendAction();
        return;
    }
    if (!doubleAction_.empty()) {
        NSApp()->sendAction_to_from(doubleAction_, target(), selfOf(this));
        return;
    }
    const auto column = columnAtIndex(clickedColumn_);
    if (column && clickedRow_ >= 0 && clickedRow_ < numberOfRows() && column->isEditable() && askEdit(column, clickedRow_))
        editColumn_row(clickedColumn_, clickedRow_);
}

void NSTableView::performClick(std::int64_t row, std::int64_t column, NSEventModifierFlags modifiers, int clickCount) {
    assertMain("NSTableView performClick");
    const auto self = selfOf(this);
    if (!isEnabled() || row >= numberOfRows())
        return;
    clickedRow_ = row;
    clickedColumn_ = column;
    clickSelects(row, modifiers);
    for (int click = 1; click <= clickCount; ++click)
        clickActs(click);
}

void NSTableView::mouseDown(NSEvent &event) {
    if (!isEnabled())
        return;
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    clickedRow_ = rowAtPoint(point);
    clickedColumn_ = columnAtPoint(point);
    if (const auto window = this->window())
        window->makeFirstResponder(selfOf(this));
    clickTaken_ = handlesClick(point, clickedRow_);
    if (!clickTaken_ && event.clickCount < 2)
        clickSelects(clickedRow_, event.modifierFlags);
}

void NSTableView::mouseUp(NSEvent &event) {
    if (isEnabled() && !std::exchange(clickTaken_, false))
        clickActs(event.clickCount);
}

std::int64_t NSTableView::pageRows() {
    const NSRange shown = rowsInRect(viewport());
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(shown.length) - 1);
}

void NSTableView::moveSelection(std::int64_t to, bool extend) {
    if (numberOfRows() == 0)
        return;
    to = std::max<std::int64_t>(0, std::min(to, numberOfRows() - 1));
    if (extend && allowsMultiple_ && anchor_ >= 0) {
        proposeSelection(range(anchor_, to), to);
    } else {
        anchor_ = to;
        proposeSelection(one(to), to);
    }
    scrollRowToVisible(selectedRow());
}

void NSTableView::keyDown(NSEvent &event) {
    const std::int64_t last = numberOfRows() - 1, now = selectedRow();
    const bool extend = event.has(NSEventModifierFlagShift);
    // Where nothing can be selected the key scrolls.
    const auto move = [&](std::int64_t to, double scrolledBy) {
        moveSelection(to, extend);
        if (selected_.isEmpty())
            scrollToPoint({viewport().minX(), viewport().minY() + scrolledBy});
    };
    constexpr double kLine = 40;
    const double page = viewport().size.height - kLine, all = heights_.total();
    switch (event.keyCode) {
    case keycode::up:
        return move(now < 0 ? last : now - 1, -kLine);
    case keycode::down:
        return move(now + 1, kLine);
    case keycode::pageUp:
        return move(now - pageRows(), -page);
    case keycode::pageDown:
        return move(now + pageRows(), page);
    case keycode::home:
        return move(0, -all);
    case keycode::end:
        return move(last, all);
    case keycode::a:
        if (event.has(NSEventModifierFlagCommand)) {
            if (allowsMultiple_ && last >= 0)
                proposeSelection(range(0, last), last);
            return;
        }
        [[fallthrough]];
    default:
        NSControl::keyDown(event);
    }
}

std::shared_ptr<NSMenu> NSTableView::menuForEvent(NSEvent &event) {
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    clickedRow_ = rowAtPoint(point);
    clickedColumn_ = columnAtPoint(point);
    return NSControl::menuForEvent(event);
}

bool NSTableView::editColumn_row(std::int64_t column, std::int64_t row) {
    assertMain("NSTableView editColumn:row:");
    scrollRowToVisible(row);
    const auto view = viewAtColumn_row_makeIfNecessary(column, row, true);
    const auto cell = std::dynamic_pointer_cast<NSTableCellView>(view);
    const auto field = cell ? cell->textField() : std::dynamic_pointer_cast<NSTextField>(view);
    if (!field || !field->beginEditing())
        return false;
    if (const auto window = this->window())
        window->makeFirstResponder(field);
    Presenter::current()->editorDidOpen(*field);
    return true;
}
