#include "host/window/ForeignFiles.h"

#include <QApplication>

#include <algorithm>
#include <memory>
#include <optional>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "host/import/Handover.h"
#include "host/window/Notices.h"
#include "host/window/QtText.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSSavePanel.h"

namespace host {

namespace {

constexpr const char *kLastFolderKey = "ContactImportPathKey";

bool takes(const NSSavePanel &panel, const char *type) {
    return std::ranges::any_of(panel.allowedFileTypes, [&](const NSString &allowed) { return allowed.isEqualIgnoringCase(type); });
}

// What a rewriting says, as long as a person would scroll.
class Report {
public:
    void add(std::int64_t line, const std::string &text) {
        constexpr int kMostLines = 500;
        if (++lines_ > kMostLines)
            return;
        text_ += line > 0 ? QObject::tr("Line %1: ").arg(line) : QString();
        for (const QChar c : QString::fromStdString(text))
            text_ += c.category() == QChar::Other_Control && c != u'\n' ? QChar(0xFFFD) : c;
        text_ += u'\n';
    }
    // After the import, whose windows would cover it.
    void show(const QString &file) const {
        if (lines_ == 0)
            return;
        whenQuiet([file, text = text_] {
            showNotice(nullptr, QObject::tr("%1 was written by another program.").arg(file),
                       QObject::tr("It was adapted for the import; your file is unchanged. The details say what became of its parts."), text);
        });
    }

private:
    QString text_;
    int lines_ = 0;
};

// The waiting pointer while this stands.
class Waiting {
public:
    Waiting() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    Waiting(const Waiting &) = delete;
    ~Waiting() { QApplication::restoreOverrideCursor(); }
};

void refuse(QWidget *owner, const QString &file, const std::string &reason) {
    showNotice(owner, QObject::tr("%1 cannot be read.").arg(file),
               QString::fromStdString(reason) + u'\n' +
                   QObject::tr("Nothing of it was imported. Check the file, or export it anew from the program that wrote it."));
}

std::unique_ptr<foreign::Handover> rewritten(const NSString &file, const NSString &scratch, QWidget *owner) {
    const auto kind = file.pathExtension().isEqualIgnoringCase("csv") ? foreign::FileKind::table : foreign::FileKind::cards;
    const QString name = qtString(file.lastPathComponent());
    try {
        Report report;
        std::unique_ptr<foreign::Handover> result;
        {
            const Waiting waiting;
            result = std::make_unique<foreign::Handover>(file.str(), kind, scratch.str(),
                                                         [&](std::int64_t line, const std::string &text) { report.add(line, text); });
        }
        if (result->isRewritten() && result->contacts() == 0) {
            refuse(owner, qtString(file), "The file holds nothing to import.");
            return nullptr;
        }
        report.show(name);
        return result;
    } catch (const FatalParseFailure &fatal) {
        refuse(owner, qtString(file), (fatal.line() ? "Line " + std::to_string(*fatal.line()) + ": " : "") + fatal.reason().str());
    } catch (const std::exception &error) {
        refuse(owner, qtString(file), error.what());
    }
    return nullptr;
}

}  // namespace

bool takesContacts(const NSSavePanel &panel) {
    return dynamic_cast<const NSOpenPanel *>(&panel) && takes(panel, "vcf") && takes(panel, "csv");
}

std::vector<NSString> handedOver(const NSSavePanel &panel, const std::vector<NSString> &files, QWidget *owner) {
    const NSString scratch = userFolders().applicationSupport;
    if (!takesContacts(panel) || scratch.isEmpty() || files.size() != 1)
        return files;
    const NSString extension = files.front().pathExtension();
    if (!takes(panel, extension.UTF8String()) && !extension.isEqualIgnoringCase("vcard"))
        return files;   // the panel refuses it with its own words
    const std::shared_ptr<foreign::Handover> handover = rewritten(files.front(), scratch, owner);
    if (!handover)
        return {};
    // The flow remembers the folder of what it was given, then reads it, all before this block runs.
    dispatch::async(dispatch::main(), [handover, folder = files.front().stringByDeletingLastPathComponent()] {
        if (RVProductConfig::valueForKey(kLastFolderKey) == NSString(handover->path().parent_path().string()))
            RVProductConfig::setValue_forKey(folder, kLastFolderKey);
    });
    return {NSString(handover->path().string())};
}

NSString extraFileType(const NSSavePanel &panel) { return takesContacts(panel) ? NSString("vcard") : NSString(); }

}  // namespace host
