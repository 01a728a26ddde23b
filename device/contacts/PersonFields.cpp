#include "device/contacts/PersonFields.h"

namespace device::contacts {

NSString completeNameOf(const std::array<NSString, kPersonFields.size()> &fields) {
    const NSString *only = nullptr;
    thread_local std::string joined;   // one block for all the names of a load
    joined.clear();
    for (std::size_t i = 0; i < kNameParts; ++i) {
        if (fields[i].isEmpty())
            continue;
        if (!only) {
            only = &fields[i];
            continue;
        }
        if (joined.empty())
            joined = only->view();
        joined += ' ';
        joined += fields[i].view();
    }
    if (!joined.empty())
        return joined;
    if (only)
        return *only;
    const NSString &organization = fields[kOrganizationField];
    return organization.isNil() ? NSString("") : organization;
}

}  // namespace device::contacts
