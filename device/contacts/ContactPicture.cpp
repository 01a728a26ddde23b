#include "device/contacts/ContactPicture.h"

#include "device/AccessError.h"
#include "device/File.h"
#include "device/picture/Jpeg.h"

namespace device::contacts {

namespace {

std::optional<std::string> broughtBytes(const ZpContactDataInfo &contact) {
    if (const NSDataRef data = contact.imageCharData(); data && data->length() > 0)
        return std::string(data->bytes());
    const NSString &path = contact.imagePath();
    if (path.isEmpty() || path.lastPathComponent().hasPrefix(kPlaceholderName))
        return std::nullopt;
    try {
        return readWhole(path.str(), kMaxPictureBytes);
    } catch (const AccessError &) {   // a picture that has gone is no reason to lose the contact
        return std::nullopt;
    }
}

std::optional<std::string> asJpeg(std::optional<std::string> bytes) {
    if (!bytes || bytes->empty())
        return std::nullopt;
    if (picture::isJpeg(*bytes))
        return bytes;
    if (std::optional<std::string> converted = picture::convertedToJpeg(*bytes))
        return converted;
    return bytes;
}

bool isPlaceholder(const NSImage &image) {
    return image.name().hasPrefix(kPlaceholderName) || image.path().lastPathComponent().hasPrefix(kPlaceholderName);
}

}  // namespace

std::optional<std::string> newPictureOf(const ZpContactDataInfo &contact) { return asJpeg(broughtBytes(contact)); }

std::optional<std::string> exportedPictureOf(const ZpContactDataInfo &contact) {
    if (const NSDataRef data = contact.imageCharData(); data && data->length() > 0)
        return asJpeg(std::string(data->bytes()));
    const auto image = contact.image_data();
    const NSDataRef data = image && !isPlaceholder(*image) ? image->data() : nullptr;
    return data ? asJpeg(std::string(data->bytes())) : std::nullopt;
}

}  // namespace device::contacts
