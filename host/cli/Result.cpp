#include "host/cli/Result.h"

namespace host::cli {

void printResult(Context &context, const Json &document) {
    const NSString text = context.presenter().text();
    const bool wasTold = !context.presenter().sawTheEnd();   // the text of a window that only tells is a message, too
    if (context.options().json)
        context.console().document(document);
    else if (!text.isEmpty() && !(wasTold && Console::isOneScreen()))
        context.console().line(linesForPeople(text));
}

namespace {

std::string ofAsked(std::int64_t part, const OperationCounts &counts, const std::string &things) {
    return std::to_string(part) + " of " + std::to_string(counts.asked) + (things.empty() ? "" : " " + things);
}

}  // namespace

void tellCounts(Console &console, const OperationCounts &counts, const std::string &things, const std::string &doneVerb) {
    const std::string reason = counts.reason ? counts.reason->text : "";
    if (counts.failed > 0)
        console.message(ofAsked(counts.failed, counts, things) + " could not be " + doneVerb + (reason.empty() ? "" : ": " + reason));
    else if (!reason.empty())
        console.message(reason);
    if (counts.undone() > 0)
        console.message((isInterrupted() ? "cancelled, " : "ended early, ") + ofAsked(counts.succeeded, counts, things) + " " + doneVerb);
}

Status statusOf(const OperationCounts &counts) {
    if (isInterrupted() && counts.undone() > 0)
        return kCancelled;
    if (counts.reason && counts.succeeded == 0)
        return statusOf(counts.reason->kind);
    return counts.failed > 0 || counts.undone() > 0 ? kFailed : kDone;
}

Status endCounted(Context &context, const char *things, const char *doneVerb) {
    const OperationCounts counts = context.counts();
    printResult(context, {{"succeeded", counts.succeeded}, {"failed", counts.failed}, {"text", toJson(context.presenter().text())}});
    tellCounts(context.console(), counts, things, doneVerb);
    return statusOf(counts);
}

Status endSaved(Context &context, const char *nothingGiven) {
    const OperationCounts counts = context.counts();
    const bool isSaved = counts.succeeded > 0 && counts.failed == 0;
    if (context.options().json)
        context.console().document({{"saved", isSaved}});
    if (counts.reason && !isSaved) {
        context.console().message(counts.reason->text);
        return statusOf(counts.reason->kind);
    }
    if (counts.asked == 0)
        context.console().message(isInterrupted() ? "cancelled" : nothingGiven);
    return isSaved ? kDone : isInterrupted() ? kCancelled : kFailed;
}

std::optional<Status> endedByAnswers(Context &context) {
    if (isInterrupted())
        return kCancelled;
    return context.presenter().refused() ? std::optional(kFailed) : std::nullopt;
}

std::filesystem::path exportTarget(Context &context, const std::string &target, Target kind) {
    namespace fs = std::filesystem;
    fs::path path = fs::absolute(target).lexically_normal();
    if (kind == Target::folder && !path.has_filename())
        path = path.parent_path();   // "folder/"
    const bool mayBeReplaced = kind == Target::folder || !fs::is_directory(path);
    if (fs::exists(fs::symlink_status(path)) && !(mayBeReplaced && context.options().replace))
        throw CommandError(kFailed, path.string() + ": exists already" + (mayBeReplaced ? "; --replace replaces it" : ""));
    return path;
}

}  // namespace host::cli
