#include "host/cli/Result.h"

namespace host::cli {

void printResult(Context &context, const Json &document) {
    const NSString text = context.presenter().text();
    if (context.options().json)
        context.console().document(document);
    else if (!text.isEmpty())
        context.console().line(linesForPeople(text));
}

Status endCounted(Context &context, const char *things, const char *failedVerb) {
    const OperationCounts counts = context.counts();
    printResult(context, {{"succeeded", counts.succeeded}, {"failed", counts.failed}, {"text", toJson(context.presenter().text())}});
    if (counts.failed > 0 || counts.reason)
        context.console().message(std::to_string(counts.failed) + " of " + std::to_string(counts.asked) + " " + things +
                                  (*things ? " " : "") + "could not be " + failedVerb + (counts.reason ? ": " + counts.reason->text : ""));
    if (isInterrupted() && counts.undone() > 0)
        return kCancelled;
    if (counts.reason && counts.succeeded == 0)
        return statusOf(counts.reason->kind);
    return counts.failed > 0 || counts.undone() > 0 ? kFailed : kDone;
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

std::filesystem::path exportTarget(Context &context, const std::string &file) {
    namespace fs = std::filesystem;
    fs::path path = fs::absolute(file).lexically_normal();
    const bool isFolder = fs::is_directory(path);
    if (fs::exists(fs::symlink_status(path)) && (isFolder || !context.options().replace))
        throw CommandError(kFailed, path.string() + ": exists already" + (isFolder ? "" : "; --replace replaces it"));
    return path;
}

}  // namespace host::cli
