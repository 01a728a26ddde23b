// Made-up contacts: several languages and scripts, names that sort to the end, companies, duplicates, groups, a picture.
#pragma once

#include "device/ImageFolder.h"

namespace device::sample {

void makeEmptyContacts(ImageFolder &image);
// Nothing where the address book has contacts already.
void addContacts(ImageFolder &image);

}  // namespace device::sample
