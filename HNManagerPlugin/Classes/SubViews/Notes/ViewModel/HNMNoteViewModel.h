// The notes category: a skeleton, whose rows read "Note 1" to "Note 10". Threads: as its base.
#pragma once

#include "HNManagerPlugin/Classes/ViewModel/SkeletonViewModel.h"

class HNNoteEntity : public SkeletonEntity {
public:
    HN_DECLARE_CLASS_TABLE
};

class HNMNoteViewModel : public SkeletonViewModel {
public:
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] std::shared_ptr<SkeletonEntity> makeRow() const override { return make<HNNoteEntity>(); }
    [[nodiscard]] NSString rowWord() const override { return "Note"; }
};
