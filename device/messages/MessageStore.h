// The messages of a device image or a backup folder, as parsed chats. Nothing on the device is changed.
//
// Files    the path of an attachment's file begins with `shownAs`, the device's folder as others know it (a link to it, for
//          instance).
// Reasons  `failures` tells what could not be read: the whole database, or the first bad row.
// Threads  any, one call at a time.
#pragma once

#include <memory>

#include "device/messages/ChatReader.h"

namespace device::messages {

class MessageStore {
public:
    explicit MessageStore(std::shared_ptr<const FileTree> tree);
    MessageStore(std::shared_ptr<const FileTree> tree, std::filesystem::path shownAs) : tree_(std::move(tree)), shownAs_(std::move(shownAs)) {}

    // Chat by chat, on the calling thread; a device without messages gives none. True where all of it could be read, up to
    // where `take` ended it; bad rows are left out and noted all the same.
    bool readChats(const ChatReader::Taker &take);
    [[nodiscard]] FailureLog &failures() { return failures_; }

private:
    [[nodiscard]] NSString placeOf(const DevicePath &path) const;

    std::shared_ptr<const FileTree> tree_;
    std::filesystem::path shownAs_;
    FailureLog failures_;
};

}  // namespace device::messages
