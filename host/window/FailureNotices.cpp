#include "host/window/FailureNotices.h"

#include <QObject>

#include <algorithm>
#include <filesystem>

#include "host/services/ExportPlaces.h"
#include "host/services/WorkspaceOpener.h"
#include "host/window/Notices.h"
#include "host/window/QtText.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/SetAsideFile.h"

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr auto kUntilAllIsSaid = std::chrono::milliseconds(200);   // one notice for what fails together
constexpr std::size_t kMostLines = 500;                               // as long as a person would scroll

void addOnce(std::vector<std::string> &texts, std::string text) {
    if (texts.size() < kMostLines && std::ranges::find(texts, text) == texts.end())
        texts.push_back(std::move(text));
}

QString linesOf(const std::vector<std::string> &texts) {
    QStringList lines;
    for (const std::string &text : texts)
        lines << qtString(ExportPlaces::forPeople(NSString(text)));
    return lines.join(u'\n');
}

// What a copy of something that is not there is called; empty where the command is another one. A table's attachments go
// into a folder of their conversation, under the backup's own names.
std::string missingAttachment(const SystemCommand::Failure &failure) {
    std::error_code ignored;
    if (failure.words.size() != 3 || failure.words.front() != "cp" || fs::exists(failure.words[1], ignored))
        return {};
    const fs::path target = failure.words[2];
    const std::string name = (fs::is_directory(target, ignored) ? fs::path(failure.words[1]) : target).filename().string();
    return name.empty() ? "an attachment of the conversation " + target.filename().string() : name;
}

void tellNotOpened(const std::string &what) {
    whenQuiet([what] {
        showNotice(nullptr, QObject::tr("%1 cannot be opened.").arg(QString::fromStdString(what)),
                   QObject::tr("xdg-open found no program for it on this computer. Open it by hand."));
    });
}

}  // namespace

std::shared_ptr<FailureNotices> FailureNotices::install(std::shared_ptr<OperationRecord> record) {
    const auto notices = std::make_shared<FailureNotices>();
    notices->record_ = std::move(record);
    const std::weak_ptr<FailureNotices> link = notices;
    const auto tell = [link](auto &&call) {
        if (const auto self = link.lock())
            call(*self);
    };
    notices->record_->setListener([tell](std::int64_t items, const std::optional<device::Failure> &reason) {
        tell([&](FailureNotices &self) { self.hearItems(items, reason); });
    });
    SystemCommand::setFailureListener(
        [tell](const SystemCommand::Failure &failure) { tell([&](FailureNotices &self) { self.hearCommand(failure); }); });
    SetAsideFile::setFailureListener(
        [tell](const NSString &path) { tell([&](FailureNotices &self) { self.hearReason(path.str() + ": could not be written"); }); });
    WorkspaceOpener::setFailureListener([tell](const std::string &what) {
        dispatch::async(dispatch::main(), [tell, what] { tell([&](FailureNotices &) { tellNotOpened(what); }); });
    });
    return notices;
}

void FailureNotices::remove() {
    WorkspaceOpener::setFailureListener({});
    record_->setListener({});
    SystemCommand::setFailureListener({});
    SetAsideFile::setFailureListener({});
}

// ---------------------------------------------------------------- hearing

void FailureNotices::hearItems(std::int64_t items, const std::optional<device::Failure> &reason) {
    using Kind = device::AccessError::Kind;
    if (reason && (reason->kind == Kind::gone || reason->kind == Kind::password))
        return;
    {
        const std::scoped_lock lock(mutex_);
        heard_.items += items;
        if (reason)
            addOnce(reason->isRemark ? heard_.remarks : heard_.reasons, reason->text);
    }
    showSoon();
}

void FailureNotices::hearCommand(const SystemCommand::Failure &failure) {
    const std::string missing = missingAttachment(failure);
    if (missing.empty())
        return hearReason(failure.isRefused ? "refused: " + failure.command.str() : failure.reason);
    {
        const std::scoped_lock lock(mutex_);
        addOnce(heard_.missing, missing);
    }
    showSoon();
}

void FailureNotices::hearReason(std::string reason) {
    {
        const std::scoped_lock lock(mutex_);
        addOnce(heard_.reasons, std::move(reason));
    }
    showSoon();
}

// ---------------------------------------------------------------- showing

void FailureNotices::showSoon() {
    {
        const std::scoped_lock lock(mutex_);
        if (std::exchange(isAsked_, true))
            return;
    }
    dispatch::after(kUntilAllIsSaid, dispatch::main(), [link = weak_from_this()] {
        whenQuiet([link] {
            if (const auto self = link.lock())
                self->show();
        });
    });
}

void FailureNotices::show() {
    const Heard heard = [this] {
        const std::scoped_lock lock(mutex_);
        isAsked_ = false;
        return std::exchange(heard_, {});
    }();
    if (heard.items > 0 || !heard.reasons.empty()) {
        const QString what = heard.items == 0   ? QObject::tr("Something could not be read or written.")
                             : heard.items == 1 ? QObject::tr("One item could not be processed.")
                                                : QObject::tr("%1 items could not be processed.").arg(heard.items);
        const QString first = heard.reasons.empty() ? QString() : linesOf({heard.reasons.front()});
        showNotice(nullptr, what, first, heard.reasons.size() > 1 ? linesOf(heard.reasons) : QString());
    }
    if (!heard.remarks.empty())
        showNotice(nullptr, QObject::tr("The file was written, but:"), linesOf(heard.remarks));
    if (!heard.missing.empty())
        showNotice(nullptr, QObject::tr("Attachments are missing."),
                   QObject::tr("The backup does not hold them, so the export goes without them. The details name them."), linesOf(heard.missing));
}

}  // namespace host
