#include "HNManagerPlugin/contracts/RVPluginProtocol/RVBasePluginObject.h"

std::shared_ptr<RVBasePluginObject> principalObject(PrincipalClassFunction function) {
    std::shared_ptr<RVBasePluginObject> object(function(), objects::Ender{});
    object->init();
    return object;
}
