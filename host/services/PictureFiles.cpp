#include "host/services/PictureFiles.h"

#include <fstream>

#include "HNManagerPlugin/contracts/RVMessageWriter/PictureConverter.h"
#include "device/picture/Jpeg.h"
#include "toolkit/services/NSFileManager.h"

namespace host {

namespace {

constexpr std::int64_t kMostBytes = 256 << 20;   // a picture's file; its pixels are bounded by the decoder

bool convertFile(const NSString &from, const NSString &to) {
    if (NSFileManager::sizeOfFileAtPath(from) > kMostBytes)
        return false;
    const auto bytes = NSFileManager::contentsAtPath(from);
    const auto jpeg = bytes ? device::picture::convertedToJpeg(*bytes) : std::nullopt;
    if (!jpeg)
        return false;
    std::ofstream file(to.str(), std::ios::binary);
    file.write(jpeg->data(), static_cast<std::streamsize>(jpeg->size()));
    file.close();
    if (!file)
        NSFileManager::removeItemAtPath(to);
    return bool(file);
}

}  // namespace

void installPictureConverter(std::function<void(const std::string &)> warn) {
    if (!warn)
        return PictureConverter::install({});
    PictureConverter::install([warn = std::move(warn)](const NSString &from, const NSString &to) {
        if (convertFile(from, to))
            return true;
        warn(from.lastPathComponent().str() + ": this picture cannot be decoded; the page links to its file");
        return false;
    });
}

}  // namespace host
