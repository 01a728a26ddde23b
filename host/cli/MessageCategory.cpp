#include "host/cli/MessageCategory.h"

#include <unordered_map>

#include "host/cli/ContactCategory.h"
#include "host/cli/Ending.h"
#include "toolkit/lists/NSArrayController.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/views/NSComboBox.h"

namespace host::cli {

namespace {

constexpr const char *kThreadTexts[] = {"account", "contactName", "messageTime", "contents"};
constexpr const char *kRowFlags[] = {"isSend",         "isFailed",     "isAttachment", "isTimeOnly",
                                     "isFailedOnly", "isGroupCommunication", "isTimeOverOneHour"};
constexpr const char *kRowTexts[] = {"messageID",  "content",        "attachmentFileName", "attachmentType", "attachmentBackupPath",
                                     "attachmentTittle", "personSend", "personName", "personNameSend", "personJoin", "personNameJoin",
                                     "date", "callerID"};

Json textsOf(const Value &list) {
    Json texts = Json::array();
    for (const Value &text : list.list())
        texts.push_back(toJson(text.text()));
    return texts;
}

Json rowRecord(NSObject &row) {
    Json record;
    for (const char *key : kRowFlags)
        record[key] = row.valueForKey(key).boolValue();
    for (const char *key : kRowTexts)
        record[key] = toJson(row.valueForKey(key).text());
    record["textHeight"] = row.valueForKey("textHeight").doubleValue();
    return record;
}

}  // namespace

std::string chatIDOf(NSObject &thread) {
    return std::to_string(static_cast<std::uint64_t>(thread.valueForKey("chatID").integerValue()));
}

NSArray rowsOf(NSObject &thread) { return objectsOf(thread.valueForKey("messageArray")); }

Json threadRecord(NSObject &thread, bool withRows) {
    Json record;
    record["chatID"] = static_cast<std::uint64_t>(thread.valueForKey("chatID").integerValue());
    record["isGroupCommunication"] = thread.valueForKey("isGroupCommunication").boolValue();
    for (const char *key : kThreadTexts)
        record[key] = toJson(thread.valueForKey(key).text());
    record["serviceName"] = textsOf(thread.valueForKey("serviceName"));
    record["callerID"] = textsOf(thread.valueForKey("callerID"));
    if (!withRows)
        return record;
    Json rows = Json::array();
    for (const id &row : rowsOf(thread))
        rows.push_back(rowRecord(*row));
    record["messageArray"] = std::move(rows);
    return record;
}

MessageCategory::MessageCategory(Context &context) : context_(context) {
    PluginSession &plugin = context.plugin();
    context.run([&] { triple_ = plugin.choose(kMessagesPlace); });
    if (isInterrupted())
        throw CommandError(kCancelled, "");
    if (context.presenter().passwordRefused())
        throw CommandError(kFailed, "");
    if (const auto reason = context.counts().reason)
        throw CommandError(statusOf(reason->kind) == kNotOpened ? kNotOpened : kFailed, reason->text);
    if (context.gateRefusal() || !triple_.viewModel)
        throw CommandError(kFailed, "");   // told by the gate or the guard
}

NSArray MessageCategory::threads() const { return objectsOf(triple_.viewModel->valueForKey("contents")); }
NSString MessageCategory::status() const { return triple_.viewManager->valueForKey("tableRowInfoString").text(); }

std::vector<NSString> MessageCategory::phoneNumbers() const {
    std::vector<NSString> numbers;
    const Value list = triple_.viewModel->valueForKey("phoneNumbers");
    for (const Value &number : list.list())
        numbers.push_back(number.text());
    return numbers;
}

void MessageCategory::filter(const std::string &phoneNumber) {
    const auto combo = std::dynamic_pointer_cast<NSComboBox>(triple_.viewManager->valueForKey("phoneComboBox").object());
    if (!combo)
        return;
    context_.run([&] {
        combo->setStringValue(NSString(phoneNumber));
        triple_.viewManager->perform("switchPhoneNumberAction:", {Value(combo)});
    });
}

bool MessageCategory::search(const std::string &text) {
    const auto box = std::dynamic_pointer_cast<NSTextField>(triple_.viewManager->valueForKey("searchField").object());
    context_.run([&] {
        if (box)
            box->typeText(NSString(text));
        triple_.viewManager->perform("searchField:", {Value(box)});
    });
    const auto panel = std::dynamic_pointer_cast<NSView>(triple_.viewManager->valueForKey("noSearchField").object());
    const bool panelSaysSo = !triple_.viewManager->valueForKeyPath("noSearchResultViewCtrl.hiddenNoSearchFieldInfo").boolValue();
    return !(panelSaysSo && panel && !panel->isHiddenOrHasHiddenAncestor());
}

void MessageCategory::select(const NSIndexSet &rows) {
    const auto controller = std::dynamic_pointer_cast<NSArrayController>(triple_.viewModel->valueForKey("arrayController").object());
    context_.run([&] {
        if (controller)
            controller->setSelectionIndexes(rows);
    });
}

void MessageCategory::select(const std::vector<std::string> &chatIDs) {
    std::unordered_map<std::string, std::size_t> places;
    const NSArray all = threads();
    for (std::size_t row = 0; row < all.count(); ++row)
        places.try_emplace(chatIDOf(*all.objectAtIndex(row)), row);
    NSMutableIndexSet chosen;
    for (const std::string &chatID : chatIDs) {
        const auto place = places.find(chatID);
        if (place == places.end())
            throw CommandError(kFailed, "no conversation has the CHATID " + chatID);
        chosen.addIndex(place->second);
    }
    select(chosen);
}

void MessageCategory::selectAll() {
    NSMutableIndexSet all;
    for (std::size_t row = 0, count = threads().count(); row < count; ++row)
        all.addIndex(row);
    select(all);
}

NSArray MessageCategory::selected() const {
    const auto controller = std::dynamic_pointer_cast<NSArrayController>(triple_.viewModel->valueForKey("arrayController").object());
    return controller ? controller->selectedObjects() : NSArray();
}

}  // namespace host::cli
