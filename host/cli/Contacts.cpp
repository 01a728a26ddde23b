// contacts list, show, groups, read, import, export, add, edit, delete, duplicates, merge.
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "host/cli/Commands.h"
#include "host/cli/ContactCategory.h"
#include "host/cli/ContactRecord.h"
#include "host/cli/ForeignFile.h"
#include "host/cli/ImportFile.h"
#include "host/cli/Result.h"
#include "toolkit/lists/NSArrayController.h"
#include "toolkit/views/SetAsideFile.h"

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
    else if (rows.empty() && !isInCloud)
        console.message("there are no contacts on the device");
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

Status tellFatal(Context &context, const ImportFile &file, const FatalParseFailure &fatal) {
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
    // Without a device: the category comes up empty, and its reader works all the same.
    const CategoryTriple triple = context.pluginAlone().choose(kContactsPlace);
    const NSString handed(file.handedOver(context.services().scratch()).string());
    ContactList contacts;
    const char *reader = file.kind() == ImportKind::table ? "contactsOfCSVFile:" : "loadImportContactsVCFDataFromPath:";
    context.run([&] { contacts = contactsOf(triple.viewModel->perform(reader, {handed})); });
    if (context.fatal())
        return tellFatal(context, file, *context.fatal());
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

Status importHandedOver(Context &context, ContactCategory &category, const ImportFile &file, const std::filesystem::path &path) {
    const NSString handed(path.string());
    const ContactList before = category.rows();
    context.presenter().openWith({handed});
    context.run([&] { category.triple().viewManager->perform("onImportButton:", {Value()}); });
    if (context.fatal())
        return tellFatal(context, file, *context.fatal());
    if (const auto refusal = context.gateRefusal())
        return statusOf(*refusal);
    // The next panel opens where the person's file lies, not where it was handed over.
    RVProductConfig::setValue_forKey(NSString(file.path().parent_path().string()), kLastFolderKey);
    const bool isExplained = context.counts().asked > 0 || context.presenter().refused();
    if (!isExplained && !tellsWhyNothing(context, file, category.triple().viewModel, handed))
        context.console().message(file.path().string() + ": holds nothing to import");
    const bool hasAsked = context.counts().asked > 0;
    const Status status = endCounted(context, "contacts", "imported");
    tellRepeats(context, category, before);   // runs on, so the counts are another's from here
    return hasAsked ? status : isInterrupted() ? kCancelled : kFailed;
}

// A rewritten file without a contact is not handed over: there is no such card file.
Status tellNothing(Context &context, const ImportFile &file) {
    context.console().message(file.path().string() + ": holds nothing to import");
    return endCounted(context, "contacts", "imported") == kDone ? kFailed : kCancelled;
}

Status importFile(Context &context, const std::string &path, bool asIs) {
    const ImportFile file(path);
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    try {
        const auto rewritten = asIs ? nullptr : rewrittenFile(context, file);
        if (rewritten && rewritten->contacts() == 0)
            return tellNothing(context, file);
        return importHandedOver(context, category, file, rewritten ? rewritten->path() : file.handedOver(context.services().scratch()));
    } catch (const FatalParseFailure &fatal) {
        return tellFatal(context, file, fatal);
    }
}

// ---------------------------------------------------------------- export, delete, duplicates, merge

// KEYs, or all.
struct Selection {
    std::vector<std::string> keys;
    bool all = false;
    void apply(ContactCategory &category) const { all ? category.selectAll() : category.select(keys); }
};

struct FileKind {
    const char *extension, *selector;
};
constexpr FileKind kExports[] = {{"vcf", "exportTovCardFile:"}, {"csv", "exportToCSVFile:"}};

void removeEmptyFile(const std::filesystem::path &path) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(path, ignored)) && std::filesystem::file_size(path, ignored) == 0)
        std::filesystem::remove(path, ignored);
}

std::string withoutPath(const std::string &reason, const std::string &path) {
    return reason.starts_with(path + ": ") ? reason.substr(path.size() + 2) : reason;
}

Status exportTo(Context &context, const std::string &file, const Selection &selection) {
    namespace fs = std::filesystem;
    const NSString extension = NSString(file).pathExtension();
    const auto *kind = std::ranges::find_if(kExports, [&](const FileKind &k) { return extension.isEqualIgnoringCase(k.extension); });
    if (kind == std::end(kExports))
        throw CommandError(kFailed, file + ": is neither .vcf nor .csv");
    const fs::path path = exportTarget(context, file);
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    selection.apply(category);
    const bool isNew = !fs::exists(fs::symlink_status(path)), hasRows = !category.rows().empty();
    if (!hasRows)
        context.console().message("there are no contacts to export; the file stays empty");
    context.presenter().saveTo(NSString(path.string()), context.options().replace);
    context.run([&] { category.triple().viewManager->perform(kind->selector, {Value()}); });
    const OperationCounts counts = context.counts();
    // What the flow then left there is an empty file: the old one comes back, a new name stays free.
    const bool hasFailed = counts.failed > 0 || (hasRows && counts.asked == 0);
    if (hasFailed)
        SetAsideFile::failed(NSString(path.string()));
    const bool isWritten = SetAsideFile::settleAll() && !context.presenter().refused() && !hasFailed;
    if (hasFailed && isNew)
        removeEmptyFile(path);
    printResult(context, {{"count", counts.succeeded}, {"text", toJson(context.presenter().text())}});
    if (counts.failed > 0)
        context.console().message(path.string() + ": not written" + (counts.reason ? ": " + withoutPath(counts.reason->text, path.string()) : ""));
    else if (counts.reason)
        context.console().message(path.string() + ": " + counts.reason->text);
    return isInterrupted() && !isWritten ? kCancelled : isWritten ? kDone : kFailed;
}

Status deleteContacts(Context &context, const Selection &selection) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    selection.apply(category);
    if (!category.rows().empty())
        context.run([&] { category.triple().viewManager->perform("onDeleteButton:", {Value()}); });
    const Status status = endCounted(context, "contacts", "deleted");
    return context.counts().asked == 0 ? endedByAnswers(context).value_or(status) : status;
}

constexpr const char *kNoDuplicates = "there are no duplicate contacts";

std::vector<ContactList> duplicateGroups(const ContactCategory &category) {
    std::vector<ContactList> groups;
    for (const id &group : objectsOf(category.triple().viewManager->valueForKey("dupcontactsArray")))
        groups.push_back(contactsOf(group->valueForKey("dupContactGroupArray")));
    return groups;
}

Status duplicates(Context &context, const std::optional<std::string> &text) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    if (text && !category.search(*text))
        context.console().message("nothing matches " + *text + "; what stood on show stays there");
    context.presenter().declineAll();
    context.run([&] { category.triple().viewManager->perform("duplicateClick:", {Value()}); });
    Json groups = Json::array();
    for (const ContactList &group : duplicateGroups(category)) {
        Json &keys = groups.emplace_back(Json::array());
        for (const auto &contact : group)
            keys.push_back(toJson(contact->pKey()));
        if (context.options().json)
            continue;
        printContacts(group, context.console());
        context.console().line("");
    }
    if (context.options().json)
        context.console().document({{"groups", groups}});
    if (groups.empty() && !isInterrupted())
        context.console().message(kNoDuplicates);
    return isInterrupted() ? kCancelled : kDone;
}

// Of each group that has become one contact, that contact.
Json mergedOf(const std::vector<std::vector<NSString>> &groups, const ContactList &left) {
    std::set<NSString> keys;
    for (const auto &contact : left)
        keys.insert(contact->pKey());
    Json merged = Json::array();
    for (const auto &group : groups)
        if (std::ranges::count_if(group, [&](const NSString &key) { return keys.contains(key); }) == 1)
            merged.push_back(toJson(*std::ranges::find_if(group, [&](const NSString &key) { return keys.contains(key); })));
    return merged;
}

Status merge(Context &context) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    context.run([&] { category.triple().viewManager->perform("duplicateClick:", {Value()}); });
    std::vector<std::vector<NSString>> groups;
    for (const ContactList &group : duplicateGroups(category)) {
        auto &keys = groups.emplace_back();
        for (const auto &contact : group)
            keys.push_back(contact->pKey());
    }
    const Json merged = mergedOf(groups, category.rows());
    if (context.options().json)
        context.console().document({{"merged", merged}});
    else
        for (const Json &key : merged)
            context.console().line(forPeople(NSString(key.get<std::string>())));
    if (groups.empty() && !isInterrupted())
        context.console().message(kNoDuplicates);
    OperationCounts counts = context.counts();
    if (isInterrupted())   // each group is asked for on its own, so the rest shows nowhere else
        counts.asked = static_cast<std::int64_t>(groups.size());
    tellCounts(context.console(), counts, "groups", "merged");
    return counts.asked > 0 ? statusOf(counts) : endedByAnswers(context).value_or(statusOf(counts));
}

// ---------------------------------------------------------------- add, edit

// Texts of the editor's fields by their identifiers, absent ones stay as they are.
struct Details {
    std::map<std::string, std::optional<std::string>> texts;
    std::vector<std::string> phones, emails, groups;

    [[nodiscard]] std::map<std::string, NSString> inputs() const {
        std::map<std::string, NSString> inputs;
        for (const auto &[identifier, text] : texts)
            if (text)
                inputs[identifier] = NSString(*text);
        const auto addRows = [&](const char *name, const std::vector<std::string> &rows) {
            for (std::size_t row = 0; row < rows.size(); ++row)
                inputs[name + std::to_string(row + 1)] = NSString(rows[row]);
        };
        addRows("phone", phones);
        addRows("email", emails);
        return inputs;
    }
};

Status save(Context &context, const ContactCategory &category, const char *selector, const Details &details) {
    context.presenter().fillIn(details.inputs());
    context.run([&] { category.triple().viewManager->perform(selector, {Value()}); });
    return endSaved(context, "nothing was saved: no text was given");
}

void tick(const ContactCategory &category, const std::vector<std::string> &names) {
    for (const std::string &name : names) {
        bool isFound = false;
        for (const auto &group : category.groups())
            if (group->groupName == NSString(name))
                group->isSelected = isFound = true;
        if (!isFound)
            throw CommandError(kFailed, "no group is named " + name);
    }
}

Status add(Context &context, const Details &details) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    tick(category, details.groups);
    return save(context, category, "onNewButton:", details);
}

Status edit(Context &context, const std::string &key, const Details &details) {
    ContactCategory category(context);
    if (category.tellsOfCloud(context.console()))
        return kFailed;
    category.select({key});
    return save(context, category, "editMenuClick:", details);
}

// ---------------------------------------------------------------- the words

void addDetails(CLI::App &command, const std::shared_ptr<Details> &details) {
    for (const char *name : {"first", "last", "company", "note"})
        command.add_option("--" + std::string(name), details->texts[name])->type_name("TEXT");
    command.add_option("--phone", details->phones, "At most two")->type_name("NUMBER")->expected(1)->take_all();
    command.add_option("--email", details->emails, "At most two")->type_name("ADDRESS")->expected(1)->take_all();
}

void demandTwoRows(const Details &details) {
    if (details.phones.size() > 2 || details.emails.size() > 2)
        throw CLI::ValidationError("--phone and --email", "are taken at most twice each");
}

// The KEYs or --all; one of the two is needed.
void addSelection(CLI::App &command, const std::shared_ptr<Selection> &selection) {
    CLI::Option *keys = command.add_option("KEY", selection->keys, "The contacts' KEYs, as list shows them");
    CLI::Option *all = command.add_flag("--all", selection->all, "Every contact");
    all->excludes(keys);
}

void demandSelection(const Selection &selection) {
    if (selection.keys.empty() && !selection.all)
        throw CLI::RequiredError("KEY or --all");
}

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
    reading->add_option("FILE", *file, "A file of contacts: .vcf, .vcard or .csv")->required();
    reading->callback([=] { chosen([file](Context &context) { return read(context, *file); }); });

    const auto asIs = std::make_shared<bool>(false);
    CLI::App *importing = contacts->add_subcommand("import", "Import a file of contacts into the device");
    importing->add_option("FILE", *file, "A file of contacts: .vcf, .vcard or .csv")->required();
    importing->add_flag("--as-is", *asIs, "Hand the file over untouched, whatever program it is from");
    importing->callback([chosen, file, asIs] { chosen([file, asIs](Context &context) { return importFile(context, *file, *asIs); }); });

    const auto selection = std::make_shared<Selection>();
    CLI::App *exporting = contacts->add_subcommand("export", "Write contacts to a file, by its extension vcf or csv");
    exporting->add_option("FILE", *file, "The new file")->required();
    addSelection(*exporting, selection);
    exporting->callback([=] {
        demandSelection(*selection);
        chosen([file, selection](Context &context) { return exportTo(context, *file, *selection); });
    });

    const auto details = std::make_shared<Details>();
    CLI::App *adding = contacts->add_subcommand("add", "Add a contact");
    addDetails(*adding, details);
    adding->add_option("--group", details->groups, "The name of a group to add it to")->type_name("NAME")->expected(1)->take_all();
    adding->callback([=] {
        demandTwoRows(*details);
        chosen([details](Context &context) { return add(context, *details); });
    });
    CLI::App *editing = contacts->add_subcommand("edit", "Change a contact");
    editing->add_option("KEY", *key, "The contact's KEY, as list shows it")->required();
    addDetails(*editing, details);
    editing->callback([=] {
        demandTwoRows(*details);
        chosen([key, details](Context &context) { return edit(context, *key, *details); });
    });

    CLI::App *deleting = contacts->add_subcommand("delete", "Delete contacts from the device");
    addSelection(*deleting, selection);
    deleting->callback([=] {
        demandSelection(*selection);
        chosen([selection](Context &context) { return deleteContacts(context, *selection); });
    });

    CLI::App *finding = contacts->add_subcommand("duplicates", "The groups of contacts that repeat one another; changes nothing");
    finding->add_option("--search", *text, "Only among those with this in name, phone number or e-mail address")->type_name("TEXT");
    finding->callback([=] { chosen([text](Context &context) { return duplicates(context, *text); }); });

    contacts->add_subcommand("merge", "Merge every group of duplicates into one contact")->callback([=] { chosen(merge); });
}});

}  // namespace

}  // namespace host::cli
