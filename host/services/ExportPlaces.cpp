#include "host/services/ExportPlaces.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "host/services/PrivateTarget.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/SetAsideFile.h"
#include "toolkit/views/ViewObserver.h"

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr const char *kLastFolderKey = "MessageExportPathKey";
constexpr const char *kTable = "xls", *kPage = "", *kBookmarks = "html";   // what the panels ask for

class Places : public ViewObserver {
public:
    explicit Places(std::function<void(const std::string &)> warn) : warn_(std::move(warn)) {}

    NSString handOver(const NSSavePanel &panel, const NSString &path, bool replaces) {
        settle();
        const auto asksFor = [&](const char *type) { return panel.allowedFileTypes == std::vector<NSString>{type}; };
        const bool isPage = asksFor(kPage);
        if (asksFor(kBookmarks))
            bookmarks_ = path;
        if (!isPage && !asksFor(kTable))
            return {};
        // A private place is handed on as it is: its folder is a link without difficult characters.
        const bool isTaken = isPage ? SystemCommand::isQuotable(path) : SystemCommand::isPlain(path);
        if (std::error_code error; isTaken && fs::is_symlink(fs::path(path.str()).parent_path(), error))
            return {};
        target_ = std::make_unique<PrivateTarget>(fs::path(path.str()), isPage ? "Messages" : "Messages.xls");
        replaces_ = replaces;
        named_ = target_->path().string();
        person_ = path.str();
        return target_->isPrivate() ? NSString(target_->path().string()) : NSString();
    }
    void settle() {
        const std::unique_ptr<PrivateTarget> target = std::exchange(target_, nullptr);
        if (!target || !target->isPrivate())
            return;
        target->keepRememberedFolder(kLastFolderKey);
        if (!isWorthMoving(*target))
            return;
        if (const std::string reason = target->moveIntoPlace(replaces_); !reason.empty())
            warn_(reason);
    }
    // The person's place for one of the flow's.
    NSString placeOf(const NSString &path) {
        if (!target_ || !target_->isPrivate())
            return path;
        const fs::path asked = path.str(), target = target_->target();
        const bool isTarget = asked == target_->path(), isFolder = asked == target_->path().parent_path();
        if (!isTarget && !isFolder)
            return path;
        settle();
        return NSString((isTarget ? target : target.parent_path()).string());
    }
    void windowChanged(NSWindow &window, std::string_view key) override {
        if (key != "visible" || window.isVisible())
            return;
        if (std::dynamic_pointer_cast<RUIProgressWindowController>(window.windowController()))
            settle();
        if (std::dynamic_pointer_cast<RUIDialogWindowController>(window.windowController()) && !bookmarks_.isNil())
            SetAsideFile::settle(std::exchange(bookmarks_, {}), true);
    }
    [[nodiscard]] NSString forPeople(const NSString &text) const {
        return named_.empty() ? text : text.stringByReplacingOccurrencesOfString_withString(named_, person_);
    }

private:
    // A page has to be there; a cancelled table is empty: an older one is worth more.
    static bool isWorthMoving(const PrivateTarget &target) {
        std::error_code error;
        if (fs::is_directory(target.path(), error))
            return fs::exists(target.path() / "Messages.html", error);
        return fs::exists(target.path(), error) && (fs::file_size(target.path(), error) > 0 || !fs::exists(target.target(), error));
    }

    std::function<void(const std::string &)> warn_;
    std::unique_ptr<PrivateTarget> target_;
    bool replaces_ = false;
    std::string named_, person_;   // the last private place and the person's
    NSString bookmarks_;           // absent while no export of them runs
};

std::shared_ptr<Places> &current() {
    static std::shared_ptr<Places> places;
    return places;
}

class Opener : public WorkspaceService {
public:
    explicit Opener(std::shared_ptr<WorkspaceService> service) : service_(std::move(service)) {}
    bool openFile(const NSString &path) override { return service_->openFile(current() ? current()->placeOf(path) : path); }
    bool openURL(const NSString &address) override { return service_->openURL(address); }

private:
    std::shared_ptr<WorkspaceService> service_;
};

}  // namespace

void ExportPlaces::install(std::function<void(const std::string &)> warn) {
    current() = std::make_shared<Places>(std::move(warn));
    ViewObserver::add(current());
    NSSavePanel::setHandOver([](const NSSavePanel &panel, const NSString &path, bool replace) {
        return current() ? current()->handOver(panel, path, replace) : NSString();
    });
}

void ExportPlaces::remove() {
    NSSavePanel::setHandOver({});
    if (!current())
        return;
    current()->settle();
    ViewObserver::remove(current());
    current().reset();
}

std::shared_ptr<WorkspaceService> ExportPlaces::opener(std::shared_ptr<WorkspaceService> service) {
    return std::make_shared<Opener>(std::move(service));
}

NSString ExportPlaces::forPeople(const NSString &text) { return current() ? current()->forPeople(text) : text; }

}  // namespace host
