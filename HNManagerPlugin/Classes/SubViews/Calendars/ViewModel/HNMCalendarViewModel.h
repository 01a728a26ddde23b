// The calendars category: a skeleton, whose rows read "Calendar 1" to "Calendar 10". Threads: as its base.
#pragma once

#include "HNManagerPlugin/Classes/ViewModel/SkeletonViewModel.h"

class HNCalendarEntity : public SkeletonEntity {
public:
    HN_DECLARE_CLASS_TABLE
};

class HNMCalendarViewModel : public SkeletonViewModel {
public:
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] std::shared_ptr<SkeletonEntity> makeRow() const override { return make<HNCalendarEntity>(); }
    [[nodiscard]] NSString rowWord() const override { return "Calendar"; }
};
