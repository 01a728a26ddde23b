// A cell of a table: usually a picture and a text. The table gives it the value of its row; what the cell shows of it
// is wired by its maker through objectValueDidChange. Threads: main.
#pragma once

#include <functional>
#include <memory>

#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSView.h"

class NSImageView;

class NSTableCellView : public NSView {
public:
    [[nodiscard]] const std::shared_ptr<NSTextField> &textField() const { return textField_; }
    void setTextField(std::shared_ptr<NSTextField> field) { textField_ = std::move(field); }
    [[nodiscard]] const std::shared_ptr<NSImageView> &imageView() const { return imageView_; }
    void setImageView(std::shared_ptr<NSImageView> view) { imageView_ = std::move(view); }

    // The row's object (a tree node in an outline: its value is under "representedObject") or the data source's value.
    // Absent while the cell waits for its next row.
    [[nodiscard]] const Value &objectValue() const { return objectValue_; }
    virtual void setObjectValue(Value value);
    // After each setObjectValue of a present value, also of the same one: the cell shows it anew.
    std::function<void(NSTableCellView &)> objectValueDidChange;
    // A value of the object by key path, for such wiring.
    [[nodiscard]] Value valueOfObject(std::string_view keyPath) const;
    // Before the cell goes to another row.
    virtual void prepareForReuse() {}

    [[nodiscard]] bool isFlipped() const override { return true; }
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSTextField> textField_;
    std::shared_ptr<NSImageView> imageView_;
    Value objectValue_;
};
