// The model of a category without device access: ten rows of placeholder text.
// Threads: reloadData any; all else main.
#pragma once

#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

class SkeletonEntity : public HNMbaseEntity {
public:
    HN_DECLARE_CLASS_TABLE
    NSString identifier;   // "1" to "10"
    NSString title;
};

class SkeletonViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr int kRows = 10;
    void reloadData() override;
    // By the title.
    bool searchFileByString(const NSString &text) override;
    void searchSelectedChanged() override { rememberSelection(); }

protected:
    [[nodiscard]] virtual std::shared_ptr<SkeletonEntity> makeRow() const { return make<SkeletonEntity>(); }
    // What stands before the row's number.
    [[nodiscard]] virtual NSString rowWord() const { return ""; }
};
