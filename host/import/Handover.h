// What becomes of a person's file of contacts before a panel hands it to the plug-in.
//
// Left     a file that the plug-in's readers take whole goes over as it is, under its own name; under a private one that ends
//          in .vcf where its own ends otherwise.
// Written  any other is read here, whatever program it is from, and written anew in the dialect, into a private file (mode
//          0600, folder 0700) below `scratch`; it keeps its name's stem. Removed with this object.
// Told     what was guessed, changed or left behind, one line at a time, inside the constructor; `line` is 0 where it is of
//          the whole file. Control characters of the file may stand in the texts.
// Errors   FatalParseFailure with file, line and reason: a file that is broken; nothing is then written.
//          std::system_error: it cannot be read, is larger than 1 GiB, or there is no room for the private file.
// Cost     time grows with the file; memory is the file and one contact (a table, or a file in UTF-16: up to three times
//          the file).
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace host::foreign {

enum class FileKind { cards, table };

class Handover {
public:
    using Tell = std::function<void(std::int64_t line, const std::string &text)>;

    Handover(const std::filesystem::path &file, FileKind kind, const std::filesystem::path &scratch, const Tell &tell);
    ~Handover();
    Handover(const Handover &) = delete;
    Handover &operator=(const Handover &) = delete;

    // What the plug-in gets: the file itself, or the private one.
    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    [[nodiscard]] bool isRewritten() const { return isRewritten_; }
    // Contacts in a rewritten file; 0: it holds none, and there is nothing to hand over.
    [[nodiscard]] std::int64_t contacts() const { return contacts_; }

private:
    std::filesystem::path path_, folder_;   // the private folder, where there is one
    bool isRewritten_ = false;
    std::int64_t contacts_ = 0;
};

}  // namespace host::foreign
