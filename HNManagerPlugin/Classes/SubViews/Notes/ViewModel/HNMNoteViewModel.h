// The notes category: a skeleton without device access. Its model fills ten rows of placeholder text.
#pragma once

#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

class HNNoteEntity : public HNMbaseEntity {
public:
    HN_DECLARE_CLASS_TABLE
    NSString identifier;
    NSString title;
};

class HNMNoteViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr int kRows = 10;
    void reloadData() override;
    bool searchFileByString(const NSString &text) override;
    void searchSelectedChanged() override { rememberSelection(); }
};
