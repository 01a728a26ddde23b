#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableAppCellView.h"

HN_CLASS_TABLE(HNTableAppCellView, NSTableCellView,
               .key("unInstallButton", &HNTableAppCellView::unInstallButton).key("cancelButton", &HNTableAppCellView::cancelButton))
