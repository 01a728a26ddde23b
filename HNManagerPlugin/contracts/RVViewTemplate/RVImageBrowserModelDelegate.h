// What an item of an image browser tells about itself. Entities implement it; main thread, except where a host decodes
// pictures: imageRepresentation may then be asked on any thread.
#pragma once

#include "toolkit/NSData.h"
#include "toolkit/NSString.h"

// What imageRepresentation gives.
enum class ImageRepresentationType { data, path, url };

class RVImageBrowserModelDelegate {
public:
    virtual ~RVImageBrowserModelDelegate() = default;

    // Identity of the picture, for caches of decoded ones.
    [[nodiscard]] virtual NSString imageUID() = 0;
    // A larger number makes the browser drop what it has decoded.
    [[nodiscard]] virtual std::int64_t imageVersion() { return 0; }
    [[nodiscard]] virtual ImageRepresentationType imageRepresentationType() { return ImageRepresentationType::data; }
    // The bytes of an encoded picture, for the type `data`; asked each time the cell is drawn. Null: none.
    [[nodiscard]] virtual NSDataRef imageRepresentation() { return {}; }
    // The path or address, for the other two types; absent: none.
    [[nodiscard]] virtual NSString imageLocation() { return {}; }
    // Absent: the line below the picture stays empty.
    [[nodiscard]] virtual NSString imageTitle() { return {}; }
    // The group that the item stands in; absent for none.
    [[nodiscard]] virtual NSString groupTitle() { return {}; }
};
