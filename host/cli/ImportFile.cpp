#include "host/cli/ImportFile.h"

#include <algorithm>

#include "device/File.h"
#include "host/cli/Ending.h"
#include "host/services/Folders.h"
#include "toolkit/NSString.h"

namespace host::cli {

namespace fs = std::filesystem;

namespace {

struct Extension {
    const char *name;
    ImportKind kind;
};
constexpr Extension kExtensions[] = {{"vcf", ImportKind::cards}, {"vcard", ImportKind::cards}, {"csv", ImportKind::table}};

}  // namespace

ImportFile::ImportFile(const fs::path &path) : path_(fs::absolute(path).lexically_normal()) {
    const NSString extension = NSString(path_.string()).pathExtension();
    const auto *known = std::ranges::find_if(kExtensions, [&](const Extension &e) { return extension.isEqualIgnoringCase(e.name); });
    if (known == std::end(kExtensions))
        throw CommandError(kFailed, path.string() + ": is none of .vcf, .vcard, .csv");
    kind_ = known->kind;
    std::int64_t size = 0;
    try {
        size = device::File::openForReading(path_).sizeBytes();
    } catch (const device::AccessError &error) {
        throw CommandError(kNotOpened, error.what());
    }
    if (static_cast<std::uintmax_t>(size) > kMaxBytes)
        throw CommandError(kNotOpened, path.string() + ": is larger than 1 GiB");
}

fs::path ImportFile::handedOver(const fs::path &scratch) const {
    if (!NSString(path_.string()).pathExtension().isEqualIgnoringCase("vcard"))
        return path_;
    const fs::path folder = scratch / "import";
    makePrivate(folder);
    const fs::path name = folder / (path_.stem().string() + ".vcf");
    std::error_code error;
    fs::remove(name, error);
    fs::create_symlink(path_, name);
    return name;
}

}  // namespace host::cli
