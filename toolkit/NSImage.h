// A picture that is read only when somebody looks: a resource name, a path, or a function that fetches the bytes once.
//
// Size     in upright pixels (Exif or HEIF rotation applied), read from the header of PNG, JPEG, GIF or HEIC when first
//          asked; 0 by 0 where the bytes cannot be had or are none of these.
// Decoding is the host's (see PictureDecoder); `cropped` only notes the rectangle.
// Threads  all operations on any thread; the fetch function runs at most once, on the thread that asks first.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "toolkit/NSData.h"
#include "toolkit/NSGeometry.h"
#include "toolkit/NSObject.h"

class NSImage : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    using Fetch = std::function<NSDataRef()>;

    // Made by these; a null image stands for "no picture".
    [[nodiscard]] static std::shared_ptr<NSImage> named(const NSString &name);
    // Null where no file stands at the path, as the platform does.
    [[nodiscard]] static std::shared_ptr<NSImage> withContentsOfFile(const NSString &path);
    [[nodiscard]] static std::shared_ptr<NSImage> withData(NSDataRef data);
    [[nodiscard]] static std::shared_ptr<NSImage> withFetch(Fetch fetch);

    // The name under which a resource was found (without extension), absent for others.
    [[nodiscard]] const NSString &name() const { return name_; }
    [[nodiscard]] const NSString &path() const { return path_; }
    // Null where the bytes cannot be had.
    [[nodiscard]] NSDataRef data() const;
    [[nodiscard]] NSSize size() const;
    // The part of this picture inside `rect` (upright pixels); the host decodes it.
    [[nodiscard]] std::shared_ptr<NSImage> cropped(const NSRect &rect) const;
    [[nodiscard]] std::optional<NSRect> crop() const { return crop_; }
    [[nodiscard]] NSString description() const override;
    void setName(NSString name) { name_ = std::move(name); }

private:
    NSString name_;
    NSString path_;
    Fetch fetch_;
    std::optional<NSRect> crop_;
    mutable std::once_flag fetched_, sized_;
    mutable NSDataRef data_;
    mutable NSSize size_;
};

// Upright pixel size from the header of PNG, JPEG, GIF or HEIC bytes; absent where it is none of them or cut short.
[[nodiscard]] std::optional<NSSize> pictureSizeFromHeader(std::string_view bytes);
