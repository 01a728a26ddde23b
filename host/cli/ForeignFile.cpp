#include "host/cli/ForeignFile.h"

#include <set>
#include <system_error>

#include "host/cli/Ending.h"

namespace host::cli {

namespace {

Value listOf(const ContactList &contacts) { return Value(Value::List(contacts.begin(), contacts.end())); }

}  // namespace

std::unique_ptr<foreign::Handover> rewrittenFile(Context &context, const ImportFile &file) {
    const auto kind = file.kind() == ImportKind::table ? foreign::FileKind::table : foreign::FileKind::cards;
    const auto tell = [&](std::int64_t line, const std::string &text) {
        const std::string place = line > 0 ? ":" + std::to_string(line) : "";
        context.console().message(file.path().string() + place + ": " + linesForPeople(NSString(text)));
    };
    try {
        auto handover = std::make_unique<foreign::Handover>(file.path(), kind, context.services().scratch(), tell);
        return handover->isRewritten() ? std::move(handover) : nullptr;
    } catch (const std::system_error &error) {
        const bool isRoom = error.code() == std::errc::no_space_on_device;
        throw CommandError(isRoom ? kFailed : kNotOpened, error.what());
    } catch (const std::bad_alloc &) {
        throw CommandError(kFailed, file.path().string() + ": there is not enough memory to rewrite it");
    }
}

void tellRepeats(Context &context, const ContactCategory &category, const ContactList &before) {
    std::set<NSString> known;
    for (const auto &contact : before)
        known.insert(contact->pKey());
    ContactList fresh;
    for (const auto &contact : category.rows())
        if (!known.contains(contact->pKey()))
            fresh.push_back(contact);
    if (fresh.empty() || before.empty())
        return;
    std::int64_t repeats = 0;
    context.run([&] {
        repeats = category.triple().viewModel->perform("countOfRepeats:amongContacts:", {listOf(fresh), listOf(before)}).integerValue();
    });
    if (repeats > 0)
        context.console().message(std::to_string(repeats) + " of the " + std::to_string(fresh.size()) +
                                  " new contacts repeat" + (repeats == 1 ? "s" : "") + " one that was there; contacts merge joins them");
}

}  // namespace host::cli
