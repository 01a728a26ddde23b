// Images with made-up content, for trying the program out and for the embedded device.
//
// Each kind of data has one file here that registers itself; a new kind adds its content once to images that were made
// before it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "device/ImageFolder.h"

namespace device::sample {

struct Kind {
    std::string name;   // kept: images note which kinds they have got
    // Empty databases of the newest layout; what stands there already stays.
    std::function<void(ImageFolder &)> makeEmpty;
    // The content; all of it or nothing. Throws where it cannot be written.
    std::function<void(ImageFolder &)> addContent;
};

// For the start of the program: `const bool registered = registerKind({...});`
bool registerKind(Kind kind);
[[nodiscard]] const std::vector<Kind> &kinds();   // by name

// A new image at `folder`, which is missing or empty; it stands whole or not at all. Throws AccessError.
void createImage(const std::filesystem::path &folder, const std::string &name);
void createSampleImage(const std::filesystem::path &folder, const std::string &name = "Sample Phone");

// Gives a sample image the content of kinds that it has not got yet, each once: what a person has removed since does not
// come back. Nothing for an image that was not made by `createSampleImage`.
void addMissingKinds(ImageFolder &image);

}  // namespace device::sample
