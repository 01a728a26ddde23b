#include "device/backup/BackupTask.h"

#include "device/ImageFolder.h"
#include "device/Open.h"
#include "device/backup/BackupPassword.h"
#include "device/messages/MessageStore.h"
#include "toolkit/dispatch/Queue.h"

namespace device::backup {

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kDone = 0, kFailed = 1;
constexpr const char *kEncrypts = "WillEncrypt", *kPassword = "BackupPassword";

const dispatch::Queue &layer() {
    static const auto *queue = new dispatch::Queue(dispatch::Queue::serial("device.backup"));
    return *queue;
}

AccessError noDevice() { return {AccessError::Kind::gone, "", "no device is connected"}; }

}  // namespace

void BackupTask::fail(const std::exception &error) const {
    if (environment_.failed)
        environment_.failed(Failure::of(error));
}

void BackupTask::report(double percent) const {
    if (const auto told = delegate())
        told->backupProgress(percent);
}

// ---------------------------------------------------------------- backup

void BackupTask::startBackup_flag_isIncrement(const NSString &path, std::uint32_t flag, std::uint32_t) {
    Job job{0, path.str(), flag, environment_.device()};
    {
        const std::scoped_lock lock(guard_);
        job.number = ++started_;
    }
    isSlow_ = false;
    dispatch::async(layer(), [self = selfOf(this), job = std::move(job)] { self->runBackup(job); });
}

BackupTask::Fate BackupTask::fateOf(const Job &job) const {
    const std::scoped_lock lock(guard_);
    if (started_ != job.number)
        return Fate::superseded;
    return stopped_ == job.number ? Fate::stopped : Fate::goesOn;
}

bool BackupTask::isBackuping() {
    const std::scoped_lock lock(guard_);
    return ended_ != started_;
}

void BackupTask::stopBackup() {
    const std::scoped_lock lock(guard_);
    stopped_ = started_;
}

void BackupTask::enterSpeedLimitBackup() {
    if (isBackuping())
        isSlow_ = true;
}

void BackupTask::runBackup(const Job &job) {
    const Result result = take(job);
    {
        const std::scoped_lock lock(guard_);
        if (started_ != job.number)
            return;
        ended_ = job.number;
    }
    if (const auto told = delegate())
        told->backupOverWithcSeccussFlag_path_backupRes(result.code == kDone ? 1 : 0, result.path.empty() ? NSString() : NSString(result.path.string()),
                                                        result.code);
}

BackupTask::Result BackupTask::take(const Job &job) {
    if (fateOf(job) != Fate::goesOn)
        return {{}, kStopped};
    try {
        if (!job.device)
            throw noDevice();
        if (job.flag != kMessages)
            throw AccessError(AccessError::Kind::failed, job.device->root().string(), "only messages can be backed up");
        fs::path path;
        if (job.device->info().kind == DeviceKind::backup) {
            path = links_.try_emplace(job.device->root(), job.device->root()).first->second.path();
            report(100);
        } else {
            path = takeCopy(job);
        }
        return path.empty() ? Result{{}, kStopped} : Result{path, kDone};
    } catch (const std::exception &error) {
        waitForOrders(job);
        if (fateOf(job) != Fate::goesOn)
            return {{}, kStopped};
        fail(error);
        return {{}, job.device && job.device->isThere() ? kFailed : kStopped};
    }
}

fs::path BackupTask::takeCopy(const Job &job) {
    if (job.device->info().willEncrypt)
        throw AccessError(AccessError::Kind::failed, job.device->root().string(), "backups of this device are encrypted; its password has to be taken off first");
    BackupWriter writer(*job.device, {[&] { return fateOf(job) == Fate::goesOn; }, [this](double percent) { report(percent); },
                                      [this] { return isSlow_.load(); }, environment_.now});
    return writer.write(job.parent).value_or(fs::path());
}

void BackupTask::waitForOrders(const Job &job) const {
    constexpr std::chrono::milliseconds kPiece{20}, kLongest{1000};
    std::error_code error;
    for (auto waited = kPiece; waited < kLongest && !fs::exists(job.parent, error) && fateOf(job) == Fate::goesOn; waited += kPiece)
        dispatch::sleepFor(kPiece);
}

std::int64_t BackupTask::localSpaceToBackup(std::uint32_t flag) {
    try {
        const auto device = environment_.device();
        if (device && flag == kMessages && device->info().kind == DeviceKind::image)
            return BackupWriter::predictedBytes(*device);
    } catch (const std::exception &error) {
        fail(error);
    }
    return 0;
}

// ---------------------------------------------------------------- password

std::uint32_t BackupTask::isDeviceBackupEncrypted() {
    constexpr std::uint32_t kUnknown = 2;
    try {
        const auto device = environment_.device();
        if (!device)
            throw noDevice();
        return device->info().willEncrypt ? 1 : 0;
    } catch (const std::exception &error) {
        fail(error);
        return kUnknown;
    }
}

std::int32_t BackupTask::changePassword(const std::function<void(PropertyList &)> &change) const {
    try {
        const auto device = environment_.device();
        if (!device)
            throw noDevice();
        const WriterLock lock = device->lockForWriting();
        const auto &image = dynamic_cast<const ImageFolder &>(*device);
        PropertyList properties = image.properties();
        change(properties);
        image.setProperties(lock, properties);
        return 0;
    } catch (const std::exception &error) {
        fail(error);
        return 1;
    }
}

std::int32_t BackupTask::removeDeviceBackupPassword(const NSString &password) {
    return changePassword([&password](PropertyList &properties) {
        const bool isRight = properties.flag(kEncrypts).value_or(false) && isPassword(password.view(), properties.data(kPassword).value_or(""));
        if (!isRight)
            throw AccessError(AccessError::Kind::password, "", "the password of the device's backups is another one");
        properties.setFlag(kEncrypts, false);
        properties.remove(kPassword);
    });
}

std::int32_t BackupTask::setDeviceBackupPassword(const NSString &password) {
    return changePassword([&password](PropertyList &properties) {
        if (password.isEmpty() || properties.flag(kEncrypts).value_or(false))
            throw AccessError(AccessError::Kind::failed, "", "the device's backups have a password already, or the new one is empty");
        properties.setFlag(kEncrypts, true);
        properties.setData(kPassword, sealedPassword(password.view()));
    });
}

// ---------------------------------------------------------------- parse

void BackupTask::startParseBackupFile(const std::shared_ptr<BackupFileInfo> &file) {
    dispatch::async(layer(), [self = selfOf(this), path = file ? file->path : NSString(), number = ++parses_] { self->runParse(path, number); });
}

void BackupTask::runParse(const NSString &path, std::uint64_t number) {
    try {
        messages::MessageStore store(openDevice(path.str()), path.str());
        store.failures().setHandler(environment_.failed);
        store.readChats([&](const std::shared_ptr<MessageBackupChat> &chat, float progress) {
            if (parses_ != number)
                return false;
            if (const auto told = delegate())
                told->parseOneOver_type_progress(chat, kChat, progress);
            return true;
        });
    } catch (const std::exception &error) {
        fail(error);
    }
    if (const auto told = delegate())
        told->parseAllOver();
}

}  // namespace device::backup
