// The cell of a check-box column: one box in its middle. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "toolkit/tables/NSTableCellView.h"

class RVCheckBoxTableCellView : public NSTableCellView {
public:
    static constexpr double kBox = 18;

    void initWithFrame(const NSRect &frame) override;
    [[nodiscard]] const std::shared_ptr<RUICheckBox> &checkBox() const { return checkBox_; }
    HN_DECLARE_CLASS_TABLE

protected:
    void frameDidChange(const NSRect &old) override;

private:
    std::shared_ptr<RUICheckBox> checkBox_;
};
