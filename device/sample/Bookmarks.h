// Made-up bookmarks: folders in folders, an empty one, a reading list, names and addresses of several scripts.
#pragma once

#include "device/ImageFolder.h"

namespace device::sample {

void makeEmptyBookmarks(ImageFolder &image);
// Nothing where there are bookmarks already.
void addBookmarks(ImageFolder &image);

}  // namespace device::sample
