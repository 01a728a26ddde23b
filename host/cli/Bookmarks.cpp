// bookmarks list, add, folder, edit, rename, move, delete, export.
#include "host/cli/BookmarkText.h"
#include "host/cli/Commands.h"
#include "host/cli/Result.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/SetAsideFile.h"

namespace host::cli {

namespace {

using Kind = BookmarkCategory::Kind;

Status list(Context &context, const std::optional<std::string> &text) {
    BookmarkCategory category(context);
    Console &console = context.console();
    const bool isInCloud = category.tellsOfCloud();
    const bool found = isInCloud || !text || category.search(*text);
    const auto entries = isInCloud ? std::vector<BookmarkCategory::Entry>() : category.entries();
    if (context.options().json) {
        console.line(bookmarkDocument(entries, category.status(), found));
        return isInCloud ? kFailed : kDone;
    }
    printBookmarks(entries, console);
    if (!found)
        console.message("nothing matches " + *text + "; what stood on show stays there");
    else if (!category.status().isEmpty())
        console.message(category.status().str());
    else if (entries.empty() && !isInCloud)
        console.message("there are no bookmarks on the device");
    return isInCloud ? kFailed : kDone;
}

void refuseCloud(const BookmarkCategory &category) {
    if (category.tellsOfCloud())
        throw CommandError(kFailed, "");
}

// ---------------------------------------------------------------- one item

using Texts = std::map<std::string, NSString>;

// Runs a flow that asks for texts and tells at once whether they were saved.
Status save(Context &context, BookmarkCategory &category, const char *selector, Texts texts) {
    context.presenter().fillIn(std::move(texts));
    category.perform(selector);
    return endSaved(context, "nothing was saved: a text is missing");
}

// Where a command adds: in these folders and beside these bookmarks, at the top level without one.
Status add(Context &context, const std::vector<std::string> &places, const char *selector, Texts texts) {
    BookmarkCategory category(context);
    refuseCloud(category);
    category.select(category.nodesOf(places, Kind::any));
    return save(context, category, selector, std::move(texts));
}

Status change(Context &context, const std::string &key, Kind kind, const char *selector, Texts texts) {
    BookmarkCategory category(context);
    refuseCloud(category);
    category.select({category.nodeOf(key, kind)});
    return save(context, category, selector, std::move(texts));
}

// ---------------------------------------------------------------- several items

// Where the device was not asked, a question was answered with no.
Status endOfMany(Context &context, const char *doneVerb) {
    const Status status = endCounted(context, "", doneVerb);
    return status == kDone && context.counts().asked == 0 ? endedByAnswers(context).value_or(kFailed) : status;
}

Status move(Context &context, const std::vector<std::string> &keys, const std::string &target) {
    BookmarkCategory category(context);
    refuseCloud(category);
    const auto folder = category.nodeOf(target, Kind::folder);
    category.select(category.nodesOf(keys, Kind::bookmark));
    // An entry of the menu of folders.
    const auto entry = make<NSMenuItem>(NSString(), "moveBookMarksToFolder:");
    entry->representedObject = Value(folder);
    category.perform("moveBookMarksToFolder:", Value(entry));
    return endOfMany(context, "moved");
}

Status remove(Context &context, const std::vector<std::string> &keys) {
    BookmarkCategory category(context);
    refuseCloud(category);
    category.select(category.nodesOf(keys, Kind::any));
    category.perform("onDeleteButton:");
    return endOfMany(context, "deleted");
}

// ---------------------------------------------------------------- export

Status exportTo(Context &context, const std::string &file) {
    if (!NSString(file).pathExtension().isEqualIgnoringCase("html"))
        throw CommandError(kFailed, file + ": is not .html");
    const std::filesystem::path path = exportTarget(context, file);
    BookmarkCategory category(context);
    refuseCloud(category);
    context.presenter().saveTo(NSString(path.string()), context.options().replace);
    const std::int64_t all = category.triple().viewModel->valueForKey("allLeafNodeCount").integerValue();
    category.perform("onExportButton:");
    const bool isWritten = SetAsideFile::settleAll() && category.triple().viewModel->valueForKey("isFileWhole").boolValue();
    if (!isWritten && !context.presenter().refused()) {
        const NSString why = category.triple().viewModel->valueForKey("fileFailure").text();
        context.console().message(path.string() + ": not written" + (why.isEmpty() ? "" : ": " + why.str()));
    }
    const std::int64_t count = isWritten ? all - category.triple().viewModel->valueForKey("numberCouldExport").integerValue() : 0;
    printResult(context, {{"count", count}, {"text", toJson(context.presenter().text())}});
    return isWritten ? kDone : isInterrupted() ? kCancelled : kFailed;
}

// ---------------------------------------------------------------- the words

const bool registered = registerCommands({40, [](CLI::App &root, const Chosen &chosen) {
    CLI::App *bookmarks = root.add_subcommand("bookmarks", "The bookmarks of the device");
    bookmarks->require_subcommand(1);
    struct Words {
        std::optional<std::string> search;
        std::string key, name, url, target, file;
        std::vector<std::string> keys, places;
    };
    const auto words = std::make_shared<Words>();
    const auto key = [&](CLI::App *command, const char *what) { command->add_option("KEY", words->key, what)->required(); };
    const auto keys = [&](CLI::App *command, const char *what) {
        command->add_option("KEY", words->keys, what)->required()->expected(1, 1 << 20);
    };
    const auto name = [&](CLI::App *command) { command->add_option("NAME", words->name, "The name")->required(); };
    const auto url = [&](CLI::App *command) { command->add_option("URL", words->url, "The address")->required(); };
    const auto places = [&](CLI::App *command) {
        command->add_option("--in", words->places, "KEYs of folders to add to, or of bookmarks to add beside")->type_name("KEY");
    };

    CLI::App *listing = bookmarks->add_subcommand("list", "The folders and bookmarks on show");
    listing->add_option("--search", words->search, "Only those with this in the name, or in a folder also in the address")->type_name("TEXT");
    listing->callback([=] { chosen([words](Context &context) { return list(context, words->search); }); });

    CLI::App *adding = bookmarks->add_subcommand("add", "Add a bookmark");
    name(adding), url(adding), places(adding);
    adding->callback([=] {
        chosen([words](Context &context) {
            return add(context, words->places, "addBookMarkMenuClick:", {{"nameTextField", words->name}, {"URLTextField", words->url}});
        });
    });

    CLI::App *folder = bookmarks->add_subcommand("folder", "Add a folder");
    name(folder), places(folder);
    folder->callback([=] {
        chosen([words](Context &context) {
            return add(context, words->places, "addFolderMenuClick:", {{"folderTextField", words->name}});
        });
    });

    CLI::App *editing = bookmarks->add_subcommand("edit", "Change a bookmark's name and address");
    key(editing, "The bookmark's KEY, as list shows it"), name(editing), url(editing);
    editing->callback([=] {
        chosen([words](Context &context) {
            return change(context, words->key, Kind::bookmark, "EditBookMark", {{"nameTextField", words->name}, {"URLTextField", words->url}});
        });
    });

    CLI::App *renaming = bookmarks->add_subcommand("rename", "Change a folder's name");
    key(renaming, "The folder's KEY, as list shows it"), name(renaming);
    renaming->callback([=] {
        chosen([words](Context &context) {
            return change(context, words->key, Kind::folder, "RenameFolder", {{"folderTextField", words->name}});
        });
    });

    CLI::App *moving = bookmarks->add_subcommand("move", "Move bookmarks to a folder");
    keys(moving, "KEYs of bookmarks");
    moving->add_option("--to", words->target, "The folder's KEY")->required()->type_name("KEY");
    moving->callback([=] { chosen([words](Context &context) { return move(context, words->keys, words->target); }); });

    CLI::App *deleting = bookmarks->add_subcommand("delete", "Delete bookmarks, and folders with all in them");
    keys(deleting, "KEYs of bookmarks and folders");
    deleting->callback([=] { chosen([words](Context &context) { return remove(context, words->keys); }); });

    CLI::App *exporting = bookmarks->add_subcommand("export", "Write all bookmarks to one HTML file");
    exporting->add_option("FILE", words->file, "The file, .html")->required();
    exporting->callback([=] { chosen([words](Context &context) { return exportTo(context, words->file); }); });
}});

}  // namespace

}  // namespace host::cli
