// contacts list, show, groups, read, import.
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "host/cli/Commands.h"
#include "host/cli/ContactCategory.h"
#include "host/cli/ContactRecord.h"
#include "host/cli/ImportFile.h"
#include "toolkit/lists/NSArrayController.h"

namespace host::cli {

namespace {

constexpr const char *kLastFolderKey = "ContactImportPathKey";

Json recordsOf(const ContactList &contacts) {
    Json records = Json::array();
    for (const auto &contact : contacts)
        records.push_back(contactRecord(*contact));
    return records;
}

// ---------------------------------------------------------------- list, show, groups

Status list(Context &context, const std::optional<std::string> &text) {
    ContactCategory category(context);
    Console &console = context.console();
    const bool isInCloud = category.tellsOfCloud(console);
    bool found = true;
    if (!isInCloud && text)
        found = category.search(*text);
    const ContactList rows = isInCloud ? ContactList() : category.rows();
    if (context.options().json) {
        console.document({{"contacts", recordsOf(rows)}, {"status", toJson(category.status())}, {"found", found}});
        return isInCloud ? kFailed : kDone;
    }
    printContacts(rows, console);
    if (!found)
        console.message("nothing matches " + *text + "; what stood on show stays there");
    else if (!category.status().isEmpty())
        console.message(category.status().str());
    return isInCloud ? kFailed : kDone;
}

Status show(Context &context, const std::string &key) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    const std::size_t row = category.rowOf(key);
    const id &model = category.triple().viewModel;
    context.run([&] {
        if (const auto rows = std::dynamic_pointer_cast<NSArrayController>(model->valueForKey("arrayController").object()))
            rows->setSelectionIndex(row);
        category.triple().viewManager->perform("showSelectedContactInfoAtRow:", {Value(row)});
    });
    const NSString name = model->valueForKeyPath("selectedEntity.name").text();
    const NSArray details = objectsOf(model->valueForKeyPath("selectedEntity.detailInfoArray"));
    Json list = Json::array();
    std::vector<std::vector<std::string>> lines;
    for (const id &detail : details) {
        const NSString type = detail->valueForKey("type").text(), info = detail->valueForKey("info").text();
        list.push_back({{"type", toJson(type)}, {"info", toJson(info)}});
        lines.push_back({forPeople(type), forPeople(info)});
    }
    if (context.options().json) {
        context.console().document({{"name", toJson(name)}, {"details", list}});
        return kDone;
    }
    context.console().line(forPeople(name));
    context.console().table(lines);
    return kDone;
}

Status groups(Context &context) {
    ContactCategory category(context);
    const bool isInCloud = category.tellsOfCloud(context.console());
    Json list = Json::array();
    std::vector<std::vector<std::string>> lines;
    for (const auto &group : isInCloud ? ContactGroupList() : category.groups()) {
        Json keys = Json::array();
        std::string members;
        for (const NSString &key : group->ContactKey) {
            keys.push_back(toJson(key));
            members += (members.empty() ? "" : " ") + forPeople(key);
        }
        list.push_back({{"groupName", toJson(group->groupName)}, {"ContactKey", keys}});
        lines.push_back({forPeople(group->groupName), members});
    }
    if (context.options().json)
        context.console().document(list);
    else
        context.console().table(lines);
    return isInCloud ? kFailed : kDone;
}

// ---------------------------------------------------------------- read, import

void refuseTables(const ImportFile &file) {
    if (file.kind() == ImportKind::table)
        throw CommandError(kFailed, file.path().string() + ": tables of contacts (.csv) cannot be read yet, only cards (.vcf, .vcard)");
}

Status tellFatal(Context &context, const ImportFile &file) {
    const FatalParseFailure &fatal = *context.fatal();
    const std::string place = fatal.line() ? ":" + std::to_string(*fatal.line()) : "";
    context.console().message(file.path().string() + place + ": " + fatal.reason().str());
    if (context.options().json) {
        const Json line = fatal.line() ? Json(*fatal.line()) : Json(nullptr);
        context.console().document({{"fatal", {{"line", line}, {"reason", toJson(fatal.reason())}}}});
    }
    return kFailed;
}

// The plug-in may know why a file gave nothing: true then, and told with the line where there is one.
bool tellsWhyNothing(Context &context, const ImportFile &file, const id &model, const NSString &handed) {
    const Value::List why = model->perform("unreadableReasonOfFile:", {handed}).list();
    if (why.size() != 2)
        return false;
    const std::string place = why[0].isAbsent() ? "" : ":" + std::to_string(why[0].integerValue());
    context.console().message(file.path().string() + place + ": " + why[1].text().str());
    return true;
}

Status read(Context &context, const std::string &path) {
    const ImportFile file(path);
    refuseTables(file);
    // Without a device: the category comes up empty, and its reader works all the same.
    const CategoryTriple triple = context.pluginAlone().choose(kContactsPlace);
    const NSString handed(file.handedOver(context.services().scratch()).string());
    ContactList contacts;
    context.run([&] { contacts = contactsOf(triple.viewModel->perform("loadImportContactsVCFDataFromPath:", {handed})); });
    if (context.fatal())
        return tellFatal(context, file);
    if (contacts.empty() && !tellsWhyNothing(context, file, triple.viewModel, handed))
        context.console().message(file.path().string() + ": holds no contacts");
    if (context.options().json) {
        context.console().document({{"contacts", recordsOf(contacts)}});
        return kDone;
    }
    // A record from a file has no KEY and no complete name yet.
    std::vector<std::vector<std::string>> lines;
    for (const auto &contact : contacts)
        lines.push_back({forPeople(contact->first_name()), forPeople(contact->last_name()), forPeople(contact->company_name()),
                         contact->phone_numbers().empty() ? "" : forPeople(contact->phone_numbers().front().phone_number)});
    context.console().table(lines);
    return kDone;
}

// The result of a flow that counts: as document or as text, failures and what was left undone on standard error.
Status tellCounts(Context &context, const char *failedVerb) {
    const OperationCounts counts = context.counts();
    const NSString text = context.presenter().text();
    if (context.options().json)
        context.console().document({{"succeeded", counts.succeeded}, {"failed", counts.failed}, {"text", toJson(text)}});
    else if (!text.isEmpty())
        context.console().line(linesForPeople(text));
    if (counts.failed > 0)
        context.console().message(std::to_string(counts.failed) + " of " + std::to_string(counts.asked) + " contacts could not be " +
                                  failedVerb + (counts.reason ? ": " + counts.reason->text : ""));
    if (isInterrupted() && counts.undone() > 0)
        return kCancelled;
    if (counts.reason && counts.succeeded == 0 && counts.failed > 0)
        return statusOf(counts.reason->kind);
    return counts.failed > 0 || counts.undone() > 0 ? kFailed : kDone;
}

Status importFile(Context &context, const std::string &path) {
    const ImportFile file(path);
    refuseTables(file);
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    const NSString handed(file.handedOver(context.services().scratch()).string());
    context.presenter().openWith({handed});
    context.run([&] { category.triple().viewManager->perform("onImportButton:", {Value()}); });
    if (context.fatal())
        return tellFatal(context, file);
    if (const auto refusal = context.gateRefusal())
        return statusOf(*refusal);
    // The next panel opens where the person's file lies, not where it was handed over.
    RVProductConfig::setValue_forKey(NSString(file.path().parent_path().string()), kLastFolderKey);
    const bool isExplained = context.counts().asked > 0 || context.presenter().refused();
    if (!isExplained && !tellsWhyNothing(context, file, category.triple().viewModel, handed))
        context.console().message(file.path().string() + ": holds nothing to import");
    const Status status = tellCounts(context, "imported");
    return context.counts().asked == 0 ? (isInterrupted() ? kCancelled : kFailed) : status;
}

// ---------------------------------------------------------------- the words

const bool registered = registerCommands({30, [](CLI::App &root, const Chosen &chosen) {
    CLI::App *contacts = root.add_subcommand("contacts", "The contacts of the device");
    contacts->require_subcommand(1);

    const auto text = std::make_shared<std::optional<std::string>>();
    CLI::App *listing = contacts->add_subcommand("list", "The contacts on show");
    listing->add_option("--search", *text, "Only those with this in name, phone number or e-mail address")->type_name("TEXT");
    listing->callback([=] { chosen([text](Context &context) { return list(context, *text); }); });

    const auto key = std::make_shared<std::string>();
    CLI::App *showing = contacts->add_subcommand("show", "All that one contact has");
    showing->add_option("KEY", *key, "The contact's KEY, as list shows it")->required();
    showing->callback([=] { chosen([key](Context &context) { return show(context, *key); }); });

    contacts->add_subcommand("groups", "The groups and the KEYs of their members")->callback([=] { chosen(groups); });

    const auto file = std::make_shared<std::string>();
    CLI::App *reading = contacts->add_subcommand("read", "What a file of contacts holds; needs no device");
    reading->add_option("FILE", *file, "A file of cards: .vcf or .vcard")->required();
    reading->callback([=] { chosen([file](Context &context) { return read(context, *file); }); });

    const auto asIs = std::make_shared<bool>(false);
    CLI::App *importing = contacts->add_subcommand("import", "Import a file of contacts into the device");
    importing->add_option("FILE", *file, "A file of cards: .vcf or .vcard")->required();
    importing->add_flag("--as-is", *asIs, "Hand the file over untouched (so far every file is)");
    importing->callback([chosen, file, asIs] { chosen([file](Context &context) { return importFile(context, *file); }); });
}});

}  // namespace

}  // namespace host::cli
