#include "device/contacts/AddressBookStore.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <optional>
#include <set>

#include "device/contacts/AddressBookReader.h"
#include "device/contacts/AddressBookWriter.h"
#include "device/contacts/CardText.h"
#include "device/contacts/TableText.h"
#include "device/File.h"

namespace device::contacts {

namespace {

std::int64_t secondsSince2001() {
    using namespace std::chrono;
    constexpr sys_days kEpoch = year{2001} / 1 / 1;
    return duration_cast<seconds>(system_clock::now() - kEpoch).count();
}

std::optional<std::int64_t> recordOf(const std::shared_ptr<ZpContactDataInfo> &contact) {
    const std::string_view text = contact ? contact->pKey().view() : std::string_view();
    std::int64_t record = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), record);
    return error == std::errc() && end == text.data() + text.size() && !text.empty() ? std::optional(record) : std::nullopt;
}

std::int64_t knownRecord(const std::shared_ptr<ZpContactDataInfo> &contact) {
    if (const auto record = recordOf(contact))
        return *record;
    throw AccessError(AccessError::Kind::missing, "", "a contact that is not from this device");
}

const ZpContactDataInfo &given(const std::shared_ptr<ZpContactDataInfo> &contact) {
    if (!contact)
        throw AccessError(AccessError::Kind::failed, "", "no contact was given");
    return *contact;
}

std::vector<std::int64_t> rowsOf(AddressBookWriter &writer, const ContactGroupList &groups) {
    std::vector<std::int64_t> rows;
    for (const auto &group : groups) {
        const auto row = group ? writer.groupRow(*group) : std::nullopt;
        if (!row)
            throw AccessError(AccessError::Kind::missing, "", "a contact group that is not on the device: " + (group ? group->groupName.str() : ""));
        rows.push_back(*row);
    }
    return rows;
}

bool bringsPicture(const std::shared_ptr<ZpContactDataInfo> &contact) {
    return contact && (contact->imageCharData() || !contact->imagePath().isEmpty());
}

void removeExisting(AddressBookWriter &writer, const std::shared_ptr<ZpContactDataInfo> &contact) {
    if (!writer.remove(knownRecord(contact)))
        throw AccessError(AccessError::Kind::missing, "", "the contact is not on the device any more");
}

}  // namespace

AddressBookStore::AddressBookStore(std::shared_ptr<FileTree> tree)
    : tree_(std::move(tree)), pictures_(std::make_shared<PictureSource>(tree_)) {}

std::shared_ptr<AddressBookStore> AddressBookStore::open(std::shared_ptr<FileTree> tree) {
    return alloc<AddressBookStore>(std::move(tree));
}

// ---------------------------------------------------------------- reading

void AddressBookStore::getContactDataFromAddressList() {
    failures_.clear();
    ContactList contacts;
    ContactGroupList groups;
    try {
        if (tree_->find(kAddressBook)) {
            pictures_->release();   // a private copy may be older than the device by now
            sqlite::Database database = tree_->openForReading(kAddressBook);
            AddressBookReader reader(database);
            contacts = reader.contacts(pictures_.get());
            groups = reader.groups();
        } else if (!tree_->isThere()) {
            throw AccessError(AccessError::Kind::gone, tree_->root().string(), "the device has gone");
        }
    } catch (const std::exception &error) {
        contacts.clear();
        groups.clear();
        noteFailure(error);
    }
    const std::lock_guard hold(guard_);
    contacts_ = std::move(contacts);
    groups_ = std::move(groups);
}

void AddressBookStore::freeAddressBookInfo() {
    const std::lock_guard hold(guard_);
    contacts_.clear();
    groups_.clear();
}

ContactList AddressBookStore::contactArray() {
    const std::lock_guard hold(guard_);
    return contacts_;
}

ContactGroupList AddressBookStore::groupArray() {
    const std::lock_guard hold(guard_);
    return groups_;
}

std::int64_t AddressBookStore::isDeviceiCloudOpen(std::int64_t kind) { return tree_->isInCloud(static_cast<CloudKind>(kind)) ? 1 : 0; }

// ---------------------------------------------------------------- writing in groups

void AddressBookStore::noteFailure(const std::exception &error, const std::string &record) {
    Failure failure = Failure::of(error);
    if (!record.empty())
        failure.text = record + ": " + failure.text;
    failures_.note(std::move(failure));
}

bool AddressBookStore::attachPictures(const WriterLock &lock, sqlite::Database &database, const Task &task) {
    const bool isThere = tree_->find(kAddressBookImages).has_value();
    if (!(task.needsPictures && isThere) && !task.writesPictures)
        return false;
    try {
        tree_->attachForWriting(lock, database, kAddressBookImages, kImagesSchema);
        (void)database.integer("SELECT count(*) FROM images.sqlite_master");
        return true;
    } catch (const std::exception &error) {
        noteFailure(error);
        if (isThere)   // an attached wreck would spoil every commit
            try {
                database.exec("DETACH images");
            } catch (const sqlite::Error &) {
            }
        return false;
    }
}

void AddressBookStore::withDatabase(const Task &task, const std::function<void(sqlite::Database &, AddressBookWriter &)> &work) {
    if (!tree_->isThere())
        throw AccessError(AccessError::Kind::gone, tree_->root().string(), "the device has gone");
    const WriterLock lock = tree_->lockForWriting();
    pictures_->release();
    sqlite::Database database = tree_->openForWriting(lock, kAddressBook);
    const bool hasImages = attachPictures(lock, database, task);
    AddressBookWriter writer(database, hasImages, secondsSince2001());
    if (task.prepare)
        task.prepare(writer);
    work(database, writer);
}

std::vector<bool> AddressBookStore::writeGroup(sqlite::Database &database, AddressBookWriter &writer, const Task &task, std::int64_t first) {
    std::vector<bool> outcomes;
    sqlite::Transaction group(database);
    const auto start = limits_.now();
    do {
        const std::int64_t index = first + static_cast<std::int64_t>(outcomes.size());
        try {
            sqlite::Savepoint item(database);
            task.work(writer, index);
            item.keep();
            outcomes.push_back(true);
        } catch (const std::exception &error) {
            if (!database.inTransaction())   // the disk refused: nothing of the group is left
                throw;
            writer.forgetRows();
            noteFailure(error, "contact " + std::to_string(index + 1));
            outcomes.push_back(false);
        }
    } while (first + static_cast<std::int64_t>(outcomes.size()) < task.total &&
             static_cast<std::int64_t>(outcomes.size()) < limits_.contacts && limits_.now() - start < limits_.time);
    if (!tree_->isThere())
        throw AccessError(AccessError::Kind::gone, tree_->root().string(), "the device has gone");
    group.commit();
    return outcomes;
}

void AddressBookStore::inGroups(const Task &task) {
    failures_.clear();
    std::int64_t told = 0;
    std::int64_t askedAt = -1;   // the first item whose callback asked to stop
    const auto tell = [&](bool success) {
        const std::int64_t index = told++;
        if (task.tell(index, success) && askedAt < 0)
            askedAt = index;
    };
    try {
        withDatabase(task, [&](sqlite::Database &database, AddressBookWriter &writer) {
            while (told < task.total && askedAt < 0)
                for (const bool success : writeGroup(database, writer, task, told))
                    tell(success);
        });
    } catch (const std::exception &error) {
        noteFailure(error);
        while (told < task.total && askedAt < 0)
            tell(false);
    }
    // Who asked to stop waits for one call more; it is of an item that was not written.
    if (askedAt >= 0 && told == askedAt + 1 && told < task.total)
        tell(false);
}

// ---------------------------------------------------------------- the contract's writing operations

bool AddressBookStore::addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact, const ContactGroupList &groups) {
    bool isAdded = false;
    addNewContacts_toGroups_progress({contact}, groups, [&](std::int64_t, std::int64_t, std::int32_t result) {
        isAdded = result == 0;
        return 0;
    });
    return isAdded;
}

void AddressBookStore::addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                                        const AddProgress &progress) {
    const auto total = static_cast<std::int64_t>(contacts.size());
    if (total == 0) {
        failures_.clear();
        if (progress)
            progress(0, 0, -1);
        return;
    }
    Task task;
    task.total = total;
    task.writesPictures = std::ranges::any_of(contacts, bringsPicture);
    task.needsPictures = false;
    task.work = [&](AddressBookWriter &writer, std::int64_t index) {
        const std::int64_t record = writer.add(given(contacts[static_cast<std::size_t>(index)]));
        for (const std::int64_t group : rowsOf(writer, groups))
            writer.addToGroup(record, group);
    };
    task.tell = [&](std::int64_t index, bool success) { return progress && progress(index, total, success ? 0 : -1) == 1; };
    inGroups(task);
}

std::int64_t AddressBookStore::editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) {
    std::int64_t edited = 0;
    Task task;
    task.total = static_cast<std::int64_t>(contacts.size());
    task.writesPictures = std::ranges::any_of(contacts, bringsPicture);
    task.work = [&](AddressBookWriter &writer, std::int64_t index) {
        const auto &contact = contacts[static_cast<std::size_t>(index)];
        const std::int64_t record = knownRecord(contact);
        if (!writer.edit(record, *contact))
            throw AccessError(AccessError::Kind::missing, "", "the contact is not on the device any more");
        for (const std::int64_t group : rowsOf(writer, groups))
            writer.addToGroup(record, group);
    };
    task.tell = [&](std::int64_t, bool success) {
        edited += success ? 1 : 0;
        return false;
    };
    inGroups(task);
    return edited;
}

void AddressBookStore::deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) {
    constexpr std::size_t kFewContacts = 8;   // so many look-ups cost less than one walk over each table
    Task task;
    task.total = static_cast<std::int64_t>(contacts.size());
    if (contacts.size() > kFewContacts)
        task.prepare = [](AddressBookWriter &writer) { writer.expectManyRemovals(); };
    task.work = [&](AddressBookWriter &writer, std::int64_t index) { removeExisting(writer, contacts[static_cast<std::size_t>(index)]); };
    task.tell = [&](std::int64_t index, bool success) {
        bool stop = false;
        if (progress)
            progress(index, task.total, contacts[static_cast<std::size_t>(index)], success, &stop);
        return stop;
    };
    inGroups(task);
}

bool AddressBookStore::combineRepeatContacts_newContact_toGroup(const ContactList &contacts, const std::shared_ptr<ZpContactDataInfo> &merged,
                                                                const ContactGroupList &groups) {
    bool isMerged = false;
    Task task;
    task.total = 1;
    task.writesPictures = bringsPicture(merged);
    task.work = [&](AddressBookWriter &writer, std::int64_t) {
        const std::int64_t survivor = knownRecord(merged);
        if (!writer.edit(survivor, *merged))
            throw AccessError(AccessError::Kind::missing, "", "the contact is not on the device any more");
        std::set<std::int64_t> done{survivor};
        for (const auto &contact : contacts) {
            const std::int64_t record = knownRecord(contact);
            if (!done.insert(record).second)
                continue;
            writer.moveGroups(record, survivor);
            removeExisting(writer, contact);
        }
        for (const std::int64_t group : rowsOf(writer, groups))
            writer.addToGroup(survivor, group);
    };
    task.tell = [&](std::int64_t, bool success) {
        isMerged = success;
        return false;
    };
    inGroups(task);
    return isMerged;
}

// ---------------------------------------------------------------- files

namespace {

constexpr std::size_t kFileChunk = 1 << 20;

// Both name the target of a person; one that must not be written to stays.
void checkTarget(const NSString &path) {
    if (path.isEmpty())
        throw AccessError(AccessError::Kind::missing, "", "no file was named");
    if (::access(path.UTF8String(), F_OK) == 0 && ::access(path.UTF8String(), W_OK) != 0)
        throw AccessError::ofSystem(errno, path.str());
}

// The file's text in chunks: `append` adds one contact.
template <class Append>
void writeContacts(const NSString &path, const ContactList &contacts, std::string front, const Append &append) {
    checkTarget(path);
    replaceWhole(path.str(), [&](File &file) {
        std::string chunk = std::move(front);
        for (const auto &contact : contacts) {
            append(chunk, given(contact));
            if (chunk.size() < kFileChunk)
                continue;
            file.write(chunk);
            chunk.clear();
        }
        file.write(chunk);
    });
}

}  // namespace

void AddressBookStore::exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) {
    failures_.clear();
    try {
        writeContacts(path, contacts, "", appendCard);
    } catch (const std::exception &error) {
        noteFailure(error);
    }
}

void AddressBookStore::exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                                        const ExportFinish &finish) {
    failures_.clear();
    bool isWritten = false;
    try {
        for (const auto &contact : contacts)
            (void)given(contact);
        const TableText table(contacts);
        std::string heading;
        table.appendHeading(heading);
        NSString cutOne;
        writeContacts(path, contacts, std::move(heading), [&](std::string &to, const ZpContactDataInfo &contact) {
            const std::size_t start = to.size();
            table.appendRow(to, contact);
            if (cutOne.isNil() && !TableText::isReadWhole(std::string_view(to).substr(start)))
                cutOne = contact.completeName().isEmpty() ? NSString("a contact without a name") : contact.completeName();
        });
        isWritten = true;
        if (cutOne)
            failures_.note({.text = "the row of " + unicode::sanitized(cutOne.view()) +
                                    " has more than 102,399 bytes: it can be imported here, but who reads the table as it stands may refuse it",
                            .isRemark = true});
    } catch (const std::exception &error) {
        noteFailure(error);
    }
    if (finish)
        finish(isWritten ? 0 : -1, isWritten ? static_cast<std::int64_t>(contacts.size()) : 0);
}

}  // namespace device::contacts
