#include "host/cli/Context.h"

#include <unistd.h>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "host/cli/Ending.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"

namespace host::cli {

Context::Context(Options options, Console &console)
    : options_(std::move(options)), console_(console), presenter_(std::make_shared<CliPresenter>(console, options_.yes)) {
    dispatch::adoptMainThread();
    dispatch::reset(dispatch::makeLeapingClock());
    dispatch::setLoopHost(dispatch::makeHeadlessHost());
    dispatch::setSettledHandlers({[this] { return presenter_->act(); }, [this] { return presenter_->over(); }});
    dispatch::setFailureSink([this](const char *what, std::exception_ptr failure) { tellFailure(what, failure); });
    Presenter::install(presenter_);
    if (console_.showsProgress()) {
        progress_ = std::make_shared<ProgressBar>(console_);
        ViewObserver::add(progress_);
    }
    interrupts_ = std::make_unique<Interrupts>([this] { interrupt(); });
}

Context::~Context() {
    interrupts_.reset();
    plugin_.reset();
    services_.reset();
    console_.clearProgress();
    Presenter::install(nullptr);
    dispatch::setSettledHandlers({});
    dispatch::setFailureSink({});
    dispatch::reset(dispatch::makeRealClock());   // lets go of threads that still wait
}

Services &Context::services() {
    if (!services_)
        services_ = std::make_unique<Services>([this](const std::string &text) { console_.message(text); },
                                               [this](device::AccessError::Kind kind, const std::string &reason) {
                                                   gateRefusal_ = kind;
                                                   console_.message(reason);
                                               });
    return *services_;
}

device::Session &Context::device() {
    if (!device_)
        device_ = services().openDevice(services().deviceFolder(options_.device));
    return *device_;
}

PluginSession &Context::plugin() {
    (void)device();
    return pluginAlone();
}

PluginSession &Context::pluginAlone() {
    if (!plugin_)
        plugin_ = std::make_unique<PluginSession>(services());
    return *plugin_;
}

void Context::run(const std::function<void()> &flow) {
    services().deviceLayer()->record()->clear();
    isInFlow_ = true;
    dispatch::guarded("the operation", flow);
    dispatch::settle();
    isInFlow_ = false;
}

void Context::tellFailure(const char *what, const std::exception_ptr &failure) {
    const std::scoped_lock lock(mutex_);
    try {
        std::rethrow_exception(failure);
    } catch (const FatalParseFailure &fatal) {
        fatal_ = fatal;
    } catch (const std::exception &error) {
        hasFailed_ = true;
        console_.message(std::string(what) + ": " + error.what());
    } catch (...) {
        hasFailed_ = true;
        console_.message(std::string(what) + ": an unknown failure");
    }
}

void Context::interrupt() {
    if (presenter_->interrupt())
        return;
    if (isInFlow_)
        return RKBackupAndRestoreTask::sharedInstance()->stopBackup();   // nothing where none runs
    // Nothing is being changed and no window could be cancelled: there is nothing to wait for.
    if (services_)
        services_->removeScratch();
    console_.clearProgress();
    _exit(kCancelled);
}

}  // namespace host::cli
