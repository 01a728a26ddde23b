#include "HNManagerPlugin/Classes/SubViews/Notes/ViewManager/HNMNoteViewManager.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(HNMNoteViewManager, SkeletonViewManager, )

NSString HNMNoteViewManager::noDataText() const { return localized("FileManager_NoNotes"); }
