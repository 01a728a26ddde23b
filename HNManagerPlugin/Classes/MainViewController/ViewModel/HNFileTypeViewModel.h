// Builds the two-level tree of categories from the list FileManagerFileType of the plug-in's bundle. Main thread.
#pragma once

#include "HNManagerPlugin/Classes/MainViewController/ViewModel/HNFileTypeObject.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

class HNFileTypeViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE

    // A missing or malformed list gives an empty tree, a missing picture a null image.
    void reloadData() override;
    // Adds the HNFileTypeObjects among the entries to the tree's top level; null does nothing. The flag is not used.
    void addEntries_flag(const std::shared_ptr<NSMutableArray> &entries, bool flag);
    // At the end: of the selected leaf's group, of the selected group, or of the top level.
    void addNode(const std::shared_ptr<HNFileTypeObject> &node);
};
