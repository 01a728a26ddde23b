#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewModel/HNMCalendarViewModel.h"

HN_CLASS_TABLE(HNCalendarEntity, SkeletonEntity, )
HN_CLASS_TABLE(HNMCalendarViewModel, SkeletonViewModel, )
