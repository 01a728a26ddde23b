// The rows of a list of duplicates: `contents`, put into `arrayController` by whoever makes both. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

class DupContactViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE

    // Shows what `contents` holds by now.
    void reloadView() override;
};
