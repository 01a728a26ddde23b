// A folder of resources: text tables, pictures, property lists.
//
// The main bundle is the host's and holds the text tables; the plug-in's own holds its pictures and lists. A host sets
// both before the plug-in is loaded. Text tables lie in "<language>.lproj/<table>.strings", else beside it.
// Threads: any.
#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "toolkit/NSImage.h"
#include "toolkit/NSString.h"
#include "toolkit/services/StringsFile.h"

class NSBundle {
public:
    // `path` absent: an empty bundle.
    explicit NSBundle(NSString path, NSString language = "en") : path_(std::move(path)), language_(std::move(language)) {}

    [[nodiscard]] static std::shared_ptr<NSBundle> mainBundle();
    // The plug-in's bundle, whatever class asks: the system has one plug-in.
    [[nodiscard]] static std::shared_ptr<NSBundle> bundleForClass();
    static void setMainBundle(std::shared_ptr<NSBundle> bundle);
    static void setPluginBundle(std::shared_ptr<NSBundle> bundle);

    [[nodiscard]] const NSString &path() const { return path_; }
    // An unknown key gives `value`, or the key itself where `value` is empty.
    [[nodiscard]] NSString localizedStringForKey_value_table(const NSString &key, const NSString &value, const NSString &table);
    // Replaces a table; for tests and for hosts that hold their texts elsewhere.
    void setTable(const NSString &name, TextTable table);
    // Absent where no such resource stands. `type` without dot; empty where the name carries it.
    [[nodiscard]] NSString pathForResource_ofType(const NSString &name, const NSString &type) const;
    // Null where there is none. The picture keeps the name.
    [[nodiscard]] std::shared_ptr<NSImage> imageForResource_ofType(const NSString &name, const NSString &type) const;

private:
    const TextTable &table(const NSString &name);

    NSString path_, language_;
    std::mutex mutex_;
    std::map<NSString, TextTable> tables_;
};
