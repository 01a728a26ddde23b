#include "tests/support/PluginWorld.h"

#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/views/NSApplication.h"

namespace {

void forgetEverything() {
    NSApplication::resetShared();
    NSNotificationCenter::defaultCenter().reset();
    AspectHooks::reset();
    RVProductWebLogHelper::shareInstance().setSink({});
    setLogSink({});
    installDeviceLayer(nullptr);
    RStrategyActionEventRouter::shareInstance().install(nullptr);
    RKBackupAndRestoreTask::setSharedInstance(nullptr);
    RVProductConfig::install(nullptr);
    NSUserDefaults::standardUserDefaults().install(nullptr);
    ActionRouter.toolBarEvent().setSelectItem(0);
    ActionRouter.managerEvent().setDelegate(nullptr);
    NSBundle::setMainBundle(std::make_shared<NSBundle>(NSString()));
}

}  // namespace

PluginWorld::PluginWorld() {
    forgetEverything();
    NSBundle::setPluginBundle(std::make_shared<NSBundle>(NSString(HN_BINARY_DIR "/Resources")));
}

PluginWorld::~PluginWorld() { forgetEverything(); }

void PluginWorld::setTexts(TextTable texts) {
    auto bundle = std::make_shared<NSBundle>(NSString());
    bundle->setTable("localization", std::move(texts));
    NSBundle::setMainBundle(std::move(bundle));
}

void PluginWorld::logUsageTo(EventLog &log) {
    RVProductWebLogHelper::shareInstance().setSink([&log](const NSString &event, const NSString &subEvent, const NSString &result) {
        log.add(event.str() + "/" + subEvent.str() + (result.isNil() ? std::string() : ":" + result.str()));
    });
}

void PluginWorld::logLinesTo(EventLog &log, std::string_view prefix) {
    setLogSink([&log, prefix = std::string(prefix)](const NSString &line) {
        if (line.hasPrefix(prefix))
            log.add(line.str());
    });
}
