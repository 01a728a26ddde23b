#include "host/services/PluginModule.h"

#include <dlfcn.h>

namespace host {

PluginError::~PluginError() = default;

std::shared_ptr<RVBasePluginObject> loadPlugin(const std::filesystem::path &path) {
    void *module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!module) {
        const char *reason = dlerror();
        throw PluginError("the plug-in cannot be opened: " + std::string(reason ? reason : path.c_str()));
    }
    const auto function = reinterpret_cast<PrincipalClassFunction>(dlsym(module, kPrincipalClassSymbol));
    if (!function)
        throw PluginError(path.string() + ": is no plug-in, it does not export " + kPrincipalClassSymbol);
    auto principal = principalObject(function);
    if (!principal)
        throw PluginError(path.string() + ": the plug-in made no principal object");
    return principal;
}

}  // namespace host
