// The device that shows while nobody names another: an image with sample content in the user's data folder, made when it
// is first asked for. Kinds of data that the program has learned since are added once.
#pragma once

#include <filesystem>

namespace host {

// The image below `data`, made where it is missing. Throws device::AccessError or std::filesystem::filesystem_error. New
// kinds that cannot be added now (another program writes the image) are left for the next time.
[[nodiscard]] std::filesystem::path embeddedDevice(const std::filesystem::path &data);

}  // namespace host
