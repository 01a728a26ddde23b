#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableController.h"

HN_CLASS_TABLE(RVTableController, NSViewController, .key("tableView", &RVTableController::tableView))

void RVTableController::viewDidLoad() {
    NSViewController::viewDidLoad();
    setupUI();
    if (const auto table = tableView.lock()) {
        table->setDelegate(selfOf(this));
        table->setDataSource(selfOf(this));
    }
}
