// What table and outline managers give their views alike: header cells and row views in the product's colours.
#pragma once

#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseTableRowView.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableHeaderCell.h"

inline constexpr double kHeaderHeight = 30.0;   // points

// Calibrated grey 240/255, opaque.
[[nodiscard]] std::shared_ptr<NSColor> headerGrey();
// `offsetX` in points before the title. A cell without title shows no sort mark.
[[nodiscard]] std::shared_ptr<RVTableHeaderCell> makeHeaderCell(const NSString &title, double offsetX);
// A row that lights up under the mouse and in a light theme colour when selected.
[[nodiscard]] std::shared_ptr<RVBaseTableRowView> makeRowView(const NSString &identifier);
