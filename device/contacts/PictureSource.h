// The pictures of contacts, read from the device when somebody looks at one.
//
// Threads  any. All pictures of a store share one connection, used by one of them at a time; a writer lets go of it
//          first, and the next look opens a new one. The source keeps its device open as long as a picture lives.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "device/FileTree.h"
#include "toolkit/NSImage.h"

namespace device::contacts {

class PictureSource : public std::enable_shared_from_this<PictureSource> {
public:
    // The row of a contact's picture: full size, else thumbnail.
    struct Place {
        bool isThumbnail = false;
        std::int64_t rowid = 0;
    };
    using Places = std::unordered_map<std::int64_t, Place>;

    explicit PictureSource(std::shared_ptr<const FileTree> tree) : tree_(std::move(tree)) {}

    // By ABPerson.ROWID; the row of the highest rowid with bytes in it. None where there is no picture database or it
    // cannot be read: a contact is worth showing without its picture.
    [[nodiscard]] Places places();
    [[nodiscard]] std::shared_ptr<NSImage> picture(std::int64_t record, Place place);
    // Null where the picture has gone.
    [[nodiscard]] NSDataRef bytes(std::int64_t record, Place place);
    void release();

private:
    [[nodiscard]] sqlite::Database &connection();

    std::shared_ptr<const FileTree> tree_;
    std::mutex guard_;
    std::optional<sqlite::Database> connection_;
};

}  // namespace device::contacts
