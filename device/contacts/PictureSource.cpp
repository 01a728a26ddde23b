#include "device/contacts/PictureSource.h"

#include "device/contacts/AddressBookSchema.h"
#include "device/picture/Jpeg.h"

namespace device::contacts {

namespace {

constexpr const char *tableOf(bool isThumbnail) { return isThumbnail ? "ABThumbnailImage" : "ABFullSizeImage"; }

// The device puts a few bytes of its own before some thumbnails.
std::string_view withoutFront(std::string_view bytes) {
    constexpr std::size_t kMostFrontBytes = 64;
    if (pictureSizeFromHeader(bytes))
        return bytes;
    const std::size_t start = bytes.substr(0, kMostFrontBytes).find("\xFF\xD8\xFF");
    return start == std::string_view::npos ? bytes : bytes.substr(start);
}

}  // namespace

sqlite::Database &PictureSource::connection() {
    if (!connection_)
        connection_.emplace(tree_->openForReading(kAddressBookImages));
    return *connection_;
}

PictureSource::Places PictureSource::places() {
    Places places;
    const std::lock_guard hold(guard_);
    for (const bool isThumbnail : {true, false}) {   // a full-size row replaces the thumbnail
        try {
            const sqlite::Table table = connection().table(tableOf(isThumbnail));
            if (!table.has("record_id") || !table.has("data"))
                continue;
            sqlite::Statement rows = connection().prepare("SELECT rowid, record_id FROM " + table.name + " WHERE length(data) > 0 ORDER BY rowid");
            while (rows.step())
                places[rows.integer(1)] = {isThumbnail, rows.integer(0)};
        } catch (const std::exception &) {
        }
    }
    return places;
}

std::shared_ptr<NSImage> PictureSource::picture(std::int64_t record, Place place) {
    return NSImage::withFetch([source = shared_from_this(), record, place] { return source->bytes(record, place); });
}

NSDataRef PictureSource::bytes(std::int64_t record, Place place) {
    const std::lock_guard hold(guard_);
    try {
        sqlite::Statement row = connection().prepare("SELECT data FROM " + std::string(tableOf(place.isThumbnail)) +
                                                     " WHERE rowid = ? AND record_id = ?");
        if (!row.bind(1, place.rowid).bind(2, record).step())
            return nullptr;
        return NSData::of(place.isThumbnail ? withoutFront(row.bytes(0)) : row.bytes(0));
    } catch (const std::exception &) {
        return nullptr;
    }
}

void PictureSource::release() {
    const std::lock_guard hold(guard_);
    connection_.reset();
}

}  // namespace device::contacts
