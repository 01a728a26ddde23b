// The plug-in as a module: opened at run time, its principal object made through the one function that it exports.
//
// Life     the module stays in the process for good, since objects of its classes may end late. Threads: main.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "HNManagerPlugin/contracts/RVPluginProtocol/RVBasePluginObject.h"

namespace host {

// The text names the module and what is wrong with it.
class PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    ~PluginError() override;
};

inline constexpr const char *kPluginModuleName = "HNManagerPlugin.so";

// A new principal object of the module at `path`. Throws PluginError: it cannot be opened, it lacks the exported function,
// the function made nothing.
[[nodiscard]] std::shared_ptr<RVBasePluginObject> loadPlugin(const std::filesystem::path &path);

}  // namespace host
