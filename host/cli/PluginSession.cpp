#include "host/cli/PluginSession.h"

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"
#include "host/cli/Ending.h"
#include "toolkit/dispatch/MainLoop.h"

namespace host::cli {

namespace {

// The category's controller stands behind its view in the chain of responders.
std::shared_ptr<NSViewController> controllerOf(const Value &view) {
    const auto responder = std::dynamic_pointer_cast<NSResponder>(view.object());
    return responder ? std::dynamic_pointer_cast<NSViewController>(responder->nextResponder()) : nullptr;
}

[[noreturn]] void refuse(const std::string &what) { throw CommandError(kFailed, "the plug-in shows no " + what); }

}  // namespace

PluginSession::PluginSession(const Services &services) : principal_(services.loadPlugin()) {
    main_ = principal_->loadWithViewController();
    if (!main_ || !main_->view())
        refuse("main view");
    treeManager_ = main_->valueForKey("viewManager").object();
    treeModel_ = main_->valueForKey("viewModel").object();
    if (!treeManager_ || !treeModel_)
        refuse("tree of categories");
    dispatch::settle();
}

PluginSession::~PluginSession() {
    treeManager_ = treeModel_ = nullptr;
    main_ = nullptr;
    principal_ = nullptr;
    dispatch::settle();   // objects may have been handed over to the main queue for their end
}

CategoryTriple PluginSession::choose(const CategoryPlace &place) {
    ActionRouter.managerEvent().selectManagerItem(place.index);
    dispatch::settle();
    CategoryTriple triple;
    triple.controller = controllerOf(treeManager_->valueForKey("currentView"));
    if (!triple.controller || triple.controller->nibName() != NSString(place.nibName))
        refuse(std::string("category ") + place.nibName);
    triple.viewManager = triple.controller->valueForKey("viewManager").object();
    triple.viewModel = triple.controller->valueForKey("viewModel").object();
    if (!triple.viewManager || !triple.viewModel)
        refuse(std::string("list in ") + place.nibName);
    return triple;
}

}  // namespace host::cli
