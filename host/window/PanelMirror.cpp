#include "host/window/PanelMirror.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QPointer>
#include <QTreeView>

#include "host/window/ForeignFiles.h"
#include "host/window/QtText.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSSavePanel.h"

namespace host {

namespace {

constexpr QSize kUsualSize(860, 540);   // names, sizes and times stand there whole

// "All of them (*.csv *.vcf)", both cases, since names from phones have either.
QStringList filtersOf(const NSSavePanel &panel) {
    QStringList patterns;
    std::vector<NSString> types = panel.allowedFileTypes;
    if (const NSString extra = extraFileType(panel); !extra.isNil())
        types.push_back(extra);
    std::erase_if(types, [](const NSString &type) { return type.isEmpty(); });   // an empty one allows all
    for (const NSString &type : types) {
        const QString plain = qtString(type);
        patterns << QStringLiteral("*.") + plain.toLower() << QStringLiteral("*.") + plain.toUpper();
    }
    if (patterns.isEmpty())
        return {QObject::tr("All files") + QStringLiteral(" (*)")};
    QStringList names;
    for (const NSString &type : types)
        names << qtString(type);
    return {names.join(QStringLiteral(", ")) + QStringLiteral(" (") + patterns.join(u' ') + QStringLiteral(")")};
}

}  // namespace

PanelMirror::PanelMirror(const std::shared_ptr<NSSavePanel> &panel, QWidget *owner)
    : QFileDialog(owner), panel_(panel), isSave_(dynamic_cast<NSOpenPanel *>(panel.get()) == nullptr) {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(isSave_ ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    if (const auto *open = dynamic_cast<NSOpenPanel *>(panel.get())) {
        if (open->canChooseDirectories && !open->canChooseFiles) {
            setFileMode(QFileDialog::Directory);
            setOption(QFileDialog::ShowDirsOnly);
        } else {
            setFileMode(open->allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
        }
    } else {
        setFileMode(QFileDialog::AnyFile);
        if (!panel->allowedFileTypes.empty() && !panel->allowedFileTypes.front().isEmpty())
            setDefaultSuffix(qtString(panel->allowedFileTypes.front()));
    }
    setNameFilters(filtersOf(*panel));
    if (!panel->title().isEmpty() || !panel->message.isEmpty())
        setWindowTitle(qtString(panel->message.isEmpty() ? panel->title() : panel->message));
    if (!panel->prompt.isEmpty())
        setLabelText(QFileDialog::Accept, qtString(panel->prompt));
    if (!panel->directoryURL.isEmpty())
        setDirectory(qtString(panel->directoryURL));
    if (!panel->nameFieldStringValue.isEmpty())
        selectFile(qtString(panel->nameFieldStringValue));
    setFilter(panel->showsHiddenFiles ? filter() | QDir::Hidden : filter());
    setWindowModality(Qt::ApplicationModal);
    resize(kUsualSize);
    if (auto *list = findChild<QTreeView *>(QStringLiteral("treeView"))) {
        list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);   // names take what is left
        list->header()->setStretchLastSection(false);
    }
}

void PanelMirror::done(int result) {
    const auto panel = panel_.lock();
    if (!panel || !panel->isRunning())
        return QFileDialog::done(result);
    if (result != QDialog::Accepted) {
        panel->cancel();
        return QFileDialog::done(result);
    }
    std::vector<NSString> paths;
    for (const QString &file : selectedFiles())
        paths.push_back(toolkitString(file));
    paths = handedOver(*panel, paths, this);
    if (paths.empty())
        return;   // told; another file may do
    // A save dialog has asked about an existing file itself before it comes here.
    if (panel->choose(paths, isSave_))
        return QFileDialog::done(result);
    const QPointer<PanelMirror> self(this);
    QMessageBox::warning(this, windowTitle(), qtString(panel->refusal()));
    if (self && !panel->isRunning())
        QFileDialog::done(QDialog::Rejected);
}

}  // namespace host
