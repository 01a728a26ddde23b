#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewManager/HNMCalendarViewManager.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(HNMCalendarViewManager, SkeletonViewManager, )

NSString HNMCalendarViewManager::noDataText() const { return localized("FileManager_NoCalendars"); }
