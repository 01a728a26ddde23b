// Made-up messages: iMessage and SMS, a group with a title, pictures and other files, long gaps, messages that were not
// delivered, several scripts, words inside attributedBody, reactions and group events that no list shows.
#pragma once

#include "device/ImageFolder.h"

namespace device::sample {

void makeEmptyMessages(ImageFolder &image);
// Nothing where there are messages already.
void addMessages(ImageFolder &image);

}  // namespace device::sample
