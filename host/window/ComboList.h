// The list of a combo box, dropped down below it. Threads: main.
#pragma once

#include <QRectF>

#include <memory>

class NSComboBox;

namespace host {

class ViewSurface;

// Returns when the person has chosen or clicked elsewhere.
void popUpComboList(ViewSurface &surface, const std::shared_ptr<NSComboBox> &combo, const QRectF &place);

}  // namespace host
