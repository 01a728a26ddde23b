#include "host/cli/Summary.h"

#include "host/cli/ContactCategory.h"
#include "host/cli/ContactRecord.h"
#include "host/cli/Device.h"
#include "host/cli/Tree.h"

namespace host::cli {

Status showSummary(Context &context) {
    Console &console = context.console();
    const device::Session &device = context.device();
    const Json tree = categoryTree(context.plugin());
    ContactCategory category(context);
    const bool isInCloud = category.tellsOfCloud(console);
    const ContactList contacts = isInCloud ? ContactList() : category.rows();
    const Status status = isInCloud ? kFailed : kDone;
    if (context.options().json) {
        Json records = Json::array();
        for (const auto &contact : contacts)
            records.push_back(contactRecord(*contact));
        console.document({{"device", deviceInfo(device)}, {"tree", tree}, {"contacts", records}});
        return status;
    }
    printDeviceInfo(device, console);
    console.line("");
    printTree(tree, console, "");
    console.line("");
    printContacts(contacts, console);
    return status;
}

}  // namespace host::cli
