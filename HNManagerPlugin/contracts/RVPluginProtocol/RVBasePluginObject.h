// How a host and a plug-in meet: the principal object, and the notices that a host may send to a plug-in's controllers.
// Main thread.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/NSObject.h"

class NSViewController;

// The base of a plug-in's principal class. The host makes one, asks it for the view controller to embed, and releases it
// at shut-down.
class RVBasePluginObject : public NSObject {
public:
    // The controller of the plug-in's main view; the same one on every call.
    [[nodiscard]] virtual std::shared_ptr<NSViewController> loadWithViewController() = 0;
};

// Notices that a host may send; all optional. A host asks `wantsNotice` first.
class IPluginProtocol {
public:
    enum class Notice { appLanguageDidSwitch, mobileDeviceConnectionDidChange, mobileDeviceDidSwitchChange, mainWindowShouldClose };

    virtual ~IPluginProtocol() = default;
    [[nodiscard]] virtual bool wantsNotice(Notice) const { return false; }
    virtual void appLanguageDidSwitch_withOld(const NSString &, const NSString &) {}
    virtual void mobileDeviceConnectionDidChange_withConnectMode(const id &, std::int64_t) {}
    virtual void mobileDeviceDidSwitchChange_withOld(const id &, const id &) {}
    // False keeps the host's main window open.
    virtual bool mainWindowShouldClose() { return true; }
};

// What the module exports: makes the principal object. Found by dlsym under kPrincipalClassSymbol; the module is opened with
// RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE, since objects of its classes may end late.
using PrincipalClassFunction = RVBasePluginObject *(*)();
inline constexpr const char *kPrincipalClassSymbol = "HNManagerPluginPrincipalClass";

// Gives a new principal object, to be owned by the caller through `principalObject`. C linkage, so it passes a bare
// pointer; nothing but this header's function below should call it.
extern "C" RVBasePluginObject *HNManagerPluginPrincipalClass();

// Takes ownership of what the exported function made.
[[nodiscard]] std::shared_ptr<RVBasePluginObject> principalObject(PrincipalClassFunction function);
