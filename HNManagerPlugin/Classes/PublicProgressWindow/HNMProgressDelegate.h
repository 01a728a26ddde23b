// Whoever shows how far a worker has come. Main thread.
#pragma once

#include <memory>

#include "toolkit/NSAttributedString.h"

class HNMProgressDelegate {
public:
    virtual ~HNMProgressDelegate() = default;
    // Both lines and the bar, 0 to 100. A null line is empty.
    virtual void setProgressDialogInfo_DownTextField_progressValue(const std::shared_ptr<NSAttributedString> &up,
                                                                   const std::shared_ptr<NSAttributedString> &down, double value) = 0;
};
