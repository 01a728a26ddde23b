// The way into the plug-in: the host makes one, asks it for the view controller, and releases it at shut-down.
//
// Shut-down   where the host's tool bar stands on this plug-in, dialogs left open are dismissed; then the main controller
//             goes and with it every view. Running operations are not stopped.
// Threads     main.
#pragma once

#include "HNManagerPlugin/Classes/MainViewController/HNManagerMainViewController.h"

class HNManagerPrincipalClass : public RVBasePluginObject {
public:
    HN_DECLARE_CLASS_TABLE

    // Installs the usage hooks on every call; makes the controller only once.
    [[nodiscard]] std::shared_ptr<NSViewController> loadWithViewController() override;
    // Closes open dialogs and cancels open panels, by exact class, on the active space.
    static void closeOpenDialog();
    void dealloc() override;

    // One hook set per call: a second one sends each event twice.
    void installGALogHook();

    std::shared_ptr<HNManagerMainViewController> mainViewController;

private:
    void _GALogPhotoManager();
    void _GALogMusicManager();
    void _GALogVideoManager();
    void _GALogContactManager();
    void _GALogAppsManager();
    void _GALogiBooksManager();
    void _GALogBookMarkManager();
    void _GALogMessageManager();
};
