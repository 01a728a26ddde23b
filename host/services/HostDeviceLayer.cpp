#include "host/services/HostDeviceLayer.h"

#include "device/bookmarks/BookmarkStore.h"
#include "device/contacts/AddressBookStore.h"
#include "host/services/RecordingBookmarks.h"
#include "host/services/RecordingContacts.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSNotificationCenter.h"

namespace host {

namespace {

class SessionDevice final : public MobileDevice {
public:
    static constexpr bool kEndsOnAnyThread = true;
    explicit SessionDevice(std::shared_ptr<device::Session> session) : session_(std::move(session)) {}
    void syncRefreshAvailableSize(std::int64_t) override { session_->refreshAvailableSize(); }
    [[nodiscard]] std::int64_t dataFreeSize() override { return session_->dataFreeSize(); }
    [[nodiscard]] NSString UUID() override { return session_->UUID(); }
    [[nodiscard]] NSString iOSVersion() override { return session_->iOSVersion(); }

private:
    std::shared_ptr<device::Session> session_;
};

// Each interface is opened when it is first asked for.
class SessionContext final : public DeviceContext {
public:
    static constexpr bool kEndsOnAnyThread = true;
    SessionContext(std::shared_ptr<device::Session> session, std::shared_ptr<OperationRecord> record)
        : session_(std::move(session)), record_(std::move(record)) {}

    [[nodiscard]] std::shared_ptr<CContactManagerImpl> contactInterface() override {
        const std::scoped_lock lock(mutex_);
        if (!contacts_) {
            const auto store = device::contacts::AddressBookStore::open(session_->tree());
            contacts_ = alloc<RecordingContacts>(store, store->failures(), record_);
        }
        return contacts_;
    }

    [[nodiscard]] std::shared_ptr<CBookmarkManagerImpl> bookMarkInterface() override {
        const std::scoped_lock lock(mutex_);
        if (!bookmarks_) {
            const auto store = device::bookmarks::BookmarkStore::open(session_->tree());
            bookmarks_ = alloc<RecordingBookmarks>(store, store->failures(), record_);
        }
        return bookmarks_;
    }

private:
    std::mutex mutex_;
    std::shared_ptr<device::Session> session_;
    std::shared_ptr<OperationRecord> record_;
    std::shared_ptr<RecordingContacts> contacts_;
    std::shared_ptr<RecordingBookmarks> bookmarks_;
};

void postSwitch() {
    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDidSwitchChangeNotification);
}

}  // namespace

bool HostDeviceLayer::isDeviceConnected() {
    const auto current = session();
    return current && current->isConnected();
}

std::shared_ptr<MobileDevice> HostDeviceLayer::currentDevice() {
    const std::scoped_lock lock(mutex_);
    return device_;
}

NSString HostDeviceLayer::deviceName() {
    const auto current = session();
    return current ? current->name() : NSString();
}

std::shared_ptr<DeviceContext> HostDeviceLayer::context() {
    const std::scoped_lock lock(mutex_);
    return context_;
}

std::shared_ptr<device::Session> HostDeviceLayer::session() const {
    const std::scoped_lock lock(mutex_);
    return session_;
}

void HostDeviceLayer::take(std::shared_ptr<device::Session> session) {
    const auto device = session ? alloc<SessionDevice>(session) : nullptr;
    const auto context = session ? alloc<SessionContext>(session, record_) : nullptr;
    const std::scoped_lock lock(mutex_);
    session_ = std::move(session);
    device_ = device;
    context_ = context;
}

void HostDeviceLayer::switchTo(std::shared_ptr<device::Session> session) {
    take(std::move(session));
    if (dispatch::isMain())
        postSwitch();
    else
        dispatch::async(dispatch::main(), postSwitch);
}

}  // namespace host
