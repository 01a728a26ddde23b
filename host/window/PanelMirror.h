// The native file dialog of an open or save panel. A refused choice is told and leaves the dialog open. Threads: main.
#pragma once

#include <QFileDialog>

#include <memory>

class NSSavePanel;

namespace host {

class PanelMirror : public QFileDialog {
public:
    PanelMirror(const std::shared_ptr<NSSavePanel> &panel, QWidget *owner);

protected:
    void done(int result) override;

private:
    std::weak_ptr<NSSavePanel> panel_;
    bool isSave_;
};

}  // namespace host
