// messages list, export.
#include <filesystem>
#include <mutex>

#include "host/cli/Commands.h"
#include "host/cli/MessageCategory.h"
#include "host/cli/Result.h"
#include "host/services/PrivateTarget.h"
#include "toolkit/services/SystemCommand.h"

namespace host::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char *kLastFolderKey = "MessageExportPathKey";

// ---------------------------------------------------------------- list

struct Listing {
    std::optional<std::string> search, phone;
    bool rows = false;
};

Status list(Context &context, const Listing &wanted) {
    MessageCategory category(context);
    if (wanted.phone)
        category.filter(*wanted.phone);
    const bool found = !wanted.search || category.search(*wanted.search);
    const NSArray threads = category.threads();
    Console &console = context.console();
    if (context.options().json) {
        Json records = Json::array(), numbers = Json::array();
        for (const id &thread : threads)
            records.push_back(threadRecord(*thread, wanted.rows));
        for (const NSString &number : category.phoneNumbers())
            numbers.push_back(toJson(number));
        console.document({{"threads", std::move(records)}, {"status", toJson(category.status())}, {"found", found},
                          {"phoneNumbers", std::move(numbers)}});
        return kDone;
    }
    std::vector<std::vector<std::string>> lines;
    for (const id &thread : threads) {
        const auto text = [&](const char *key) { return forPeople(thread->valueForKey(key).text()); };
        lines.push_back({chatIDOf(*thread), text("messageTime"), text("contactName"), text("contents")});
        if (!wanted.rows)
            continue;
        for (const id &row : rowsOf(*thread))
            if (!row->valueForKey("isTimeOnly").boolValue())
                lines.push_back({"", forPeople(row->valueForKey("date").text()),
                                 row->valueForKey("isSend").boolValue() ? ">" : forPeople(row->valueForKey("personName").text()),
                                 forPeople(row->valueForKey("content").text())});
    }
    console.table(lines);
    if (!found)
        console.message("nothing matches " + *wanted.search + "; what stood on show stays there");
    else if (!category.status().isEmpty())
        console.message(category.status().str());
    return kDone;
}

// ---------------------------------------------------------------- export

struct Export {
    std::string target;
    std::vector<std::string> chatIDs;
    bool all = false, page = false;
};

// What the commands of a flow could not do, but for attachments that are not there: those are named by their rows.
class FailedCommands {
public:
    FailedCommands() {
        SystemCommand::setFailureListener([this](const SystemCommand::Failure &failure) { hear(failure); });
    }
    FailedCommands(const FailedCommands &) = delete;
    ~FailedCommands() { SystemCommand::setFailureListener({}); }
    [[nodiscard]] std::vector<std::string> reasons() const {
        const std::scoped_lock lock(mutex_);
        return reasons_;
    }

private:
    void hear(const SystemCommand::Failure &failure) {
        std::error_code ignored;
        const bool isCopy = failure.words.size() == 3 && failure.words.front() == "cp";
        if (isCopy && !fs::exists(failure.words[1], ignored))
            return;
        const std::scoped_lock lock(mutex_);
        reasons_.push_back(failure.isRefused ? "refused: " + forPeople(failure.command) : failure.reason);
    }
    mutable std::mutex mutex_;
    std::vector<std::string> reasons_;
};

void nameMissingAttachments(Context &context, const NSArray &threads) {
    for (const id &thread : threads)
        for (const id &row : rowsOf(*thread)) {
            std::error_code ignored;
            if (!row->valueForKey("isAttachment").boolValue())
                continue;
            const std::string file = row->valueForKey("attachmentBackupPath").text().str();
            if (file.empty() || !fs::exists(file, ignored))
                context.console().message(chatIDOf(*thread) + ": " + forPeople(row->valueForKey("attachmentFileName").text()) +
                                          ": the backup does not hold this attachment");
        }
}

// The page or the table stands whole where the flow was told to write it.
bool isWhole(const PrivateTarget &target, const Export &wanted) {
    std::error_code error;
    const fs::path file = wanted.page ? target.path() / "Messages.html" : target.path();
    return fs::is_regular_file(file, error) && fs::file_size(file, error) > 0 && !(wanted.page && isInterrupted());
}

Status exportTo(Context &context, const Export &wanted) {
    const fs::path path = exportTarget(context, wanted.target, wanted.page ? Target::folder : Target::file);
    MessageCategory category(context);
    wanted.all ? category.selectAll() : category.select(wanted.chatIDs);
    const NSArray threads = category.selected();
    if (threads.isEmpty())
        context.console().message("there are no messages to export");
    // Always by way of a private folder: a file of that name is replaced only once the new one is whole.
    PrivateTarget target(path, wanted.page ? "Messages" : "Messages.xls");
    const bool stood = fs::exists(fs::symlink_status(path));
    const FailedCommands commands;
    context.presenter().saveTo(NSString(target.path().string()), context.options().replace);
    context.run([&] {
        category.triple().viewManager->perform(wanted.page ? "exportMessage2HTML:" : "exportMessage:", {Value()});
    });
    target.keepRememberedFolder(kLastFolderKey);
    std::vector<std::string> reasons = commands.reasons();
    const bool isComplete = isWhole(target, wanted);
    const bool isRefused = context.presenter().refused() || context.gateRefusal() || threads.isEmpty();
    bool isWritten = isComplete && !isRefused && (reasons.empty() || !stood);
    if (isWritten)
        if (const std::string reason = target.moveIntoPlace(context.options().replace); !reason.empty()) {
            reasons.push_back(reason);
            isWritten = false;
        }
    const auto count = static_cast<std::int64_t>(isWritten ? threads.count() : 0);
    printResult(context, {{"count", count}, {"text", toJson(context.presenter().text())}});
    if (isComplete)
        nameMissingAttachments(context, threads);
    for (const std::string &reason : reasons)
        context.console().message(target.inPersonsPlaces(reason));
    if (!isWritten && !isRefused)
        context.console().message(path.string() + (isInterrupted() ? ": cancelled, not written" : ": not written"));
    if (isInterrupted() && !isWritten)
        return kCancelled;
    return isWritten && reasons.empty() ? kDone : kFailed;
}

// ---------------------------------------------------------------- the words

const bool registered = registerCommands({50, [](CLI::App &root, const Chosen &chosen) {
    CLI::App *messages = root.add_subcommand("messages", "The messages of the device");
    messages->require_subcommand(1);

    const auto listing = std::make_shared<Listing>();
    CLI::App *lister = messages->add_subcommand("list", "The conversations on show");
    lister->add_option("--search", listing->search, "Only those with this in the name")->type_name("TEXT");
    lister->add_option("--phone", listing->phone, "Only those of this number of the user's own")->type_name("NUMBER");
    lister->add_flag("--rows", listing->rows, "With their messages");
    lister->callback([=] { chosen([listing](Context &context) { return list(context, *listing); }); });

    const auto wanted = std::make_shared<Export>();
    CLI::App *exporting = messages->add_subcommand("export", "Write conversations to a table, or to a web page in a folder of its own");
    exporting->add_flag("--html", wanted->page, "A web page with its pictures and files");
    exporting->add_option("TARGET", wanted->target, "The new table, .xls; with --html the new folder")->required();
    CLI::Option *ids = exporting->add_option("CHATID", wanted->chatIDs, "The conversations' CHATIDs, as list shows them");
    exporting->add_flag("--all", wanted->all, "Every conversation")->excludes(ids);
    exporting->callback([=] {
        if (wanted->chatIDs.empty() && !wanted->all)
            throw CLI::RequiredError("CHATID or --all");
        chosen([wanted](Context &context) { return exportTo(context, *wanted); });
    });
}});

}  // namespace

}  // namespace host::cli
