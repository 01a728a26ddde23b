#include "device/messages/MessageStore.h"

#include "device/messages/MessageSchema.h"

namespace device::messages {

MessageStore::MessageStore(std::shared_ptr<const FileTree> tree) : tree_(std::move(tree)), shownAs_(tree_->root()) {}

NSString MessageStore::placeOf(const DevicePath &path) const {
    const auto found = tree_->find(path);
    if (!found)
        return {};
    const std::string place = found->string();
    const std::string &root = tree_->root().native();
    return NSString(shownAs_.string() + place.substr(root.size()));
}

bool MessageStore::readChats(const ChatReader::Taker &take) {
    failures_.clear();
    try {
        if (!tree_->isThere())
            throw AccessError(AccessError::Kind::gone, tree_->root().string(), "the device has gone");
        if (!tree_->find(kMessages))
            return true;
        sqlite::Database database = tree_->openForReading(kMessages);
        ChatReader(database, [this](const DevicePath &path) { return placeOf(path); }, failures_).read(take);
        return true;
    } catch (const std::exception &error) {
        failures_.note(Failure::of(error));
        return false;
    }
}

}  // namespace device::messages
