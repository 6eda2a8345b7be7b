// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DataFolderLock.h"

#include "files/PrivateDirectory.h"
#include "platform/Diagnostics.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// A file system whose inode numbers change from one look to the next must not keep a start
/// waiting.
constexpr int maxAttempts = 5;
constexpr int maxDigits = 20;

class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) { }
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) { }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

template <typename Call> int withoutInterruption(Call call)
{
    int result = -1;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

/// Whether the path still leads to what is open.
bool isAt(const Descriptor &open, const QByteArray &path)
{
    struct stat here = {};
    struct stat there = {};
    return ::fstat(open.number(), &here) == 0 && ::stat(path.constData(), &there) == 0
        && here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

} // namespace

/// The folder's own lock and that of a file in it. The folder's works on a full disk, the file's on
/// network file systems too; what cannot be locked at all is left out.
class DataFolderLock::Locks {
public:
    enum class Outcome : quint8 { Held, Busy, Impossible };

    Outcome take(const QByteArray &folder, const QByteArray &file, bool waits)
    {
        for (int attempt = 1;; ++attempt) {
            folder_ = Descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            file_ = Descriptor(::open(file.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                                      S_IRUSR | S_IWUSR));
            for (Descriptor *each : {&folder_, &file_}) {
                if (!lock(*each, waits)) {
                    return Outcome::Busy;
                }
            }
            if (!folder_.isOpen() && !file_.isOpen()) {
                return Outcome::Impossible;
            }
            // Others may have replaced what is locked, as when a backup is restored.
            const bool areInPlace = (!folder_.isOpen() || isAt(folder_, folder))
                && (!file_.isOpen() || isAt(file_, file));
            if (areInPlace || attempt == maxAttempts) {
                return Outcome::Held;
            }
        }
    }

    [[nodiscard]] bool hasFile() const { return file_.isOpen(); }

    /// For those who are refused. A full disk may leave the file empty.
    void sign() const
    {
        const QByteArray pid = QByteArray::number(::getpid()) + '\n';
        if (file_.isOpen() && ::ftruncate(file_.number(), 0) == 0) {
            static_cast<void>(::pwrite(file_.number(), pid.constData(), size_t(pid.size()), 0));
        }
    }

private:
    /// False when another holds it.
    static bool lock(Descriptor &descriptor, bool waits)
    {
        if (!descriptor.isOpen()) {
            return true;
        }
        const int operation = waits ? LOCK_EX : LOCK_EX | LOCK_NB;
        if (withoutInterruption([&] { return ::flock(descriptor.number(), operation); }) != 0) {
            if (errno == EWOULDBLOCK) {
                return false;
            }
            descriptor = Descriptor(); // its file system has no such locks
        }
        return true;
    }

    Descriptor folder_;
    Descriptor file_;
};

struct DataFolderLock::Waiting {
    Descriptor news{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex mutex;
    std::unique_ptr<Locks> taken; ///< guarded
    bool isAbandoned = false; ///< guarded
};

DataFolderLock::DataFolderLock(const QString &folder) : folder_(folder), file_(folder + u"/lock"_s)
{
}

DataFolderLock::~DataFolderLock()
{
    stopWaiting();
}

void DataFolderLock::stopWaiting()
{
    if (const auto waiting = std::exchange(waiting_, {})) {
        const std::scoped_lock guard(waiting->mutex);
        waiting->isAbandoned = true;
        waiting->taken.reset();
    }
}

bool DataFolderLock::tryLock()
{
    if (isNeedless_ || locks_) {
        return true;
    }
    if (waiting_) {
        const std::scoped_lock guard(waiting_->mutex);
        return waiting_->taken && keep(std::move(waiting_->taken));
    }
    if (const auto failure = makePrivateDirectory(folder_)) {
        isNeedless_ = true;
        printDiagnostic(u"notes will not be kept: "_s + failure->text());
        return true;
    }
    auto locks = std::make_unique<Locks>();
    switch (locks->take(QFile::encodeName(folder_), QFile::encodeName(file_), false)) {
    case Locks::Outcome::Busy:
        return false;
    case Locks::Outcome::Impossible:
        isNeedless_ = true;
        printDiagnostic(u"notes will not be kept: cannot write to "_s + folder_);
        return true;
    case Locks::Outcome::Held:
        break;
    }
    return keep(std::move(locks));
}

bool DataFolderLock::keep(std::unique_ptr<Locks> locks)
{
    locks_ = std::move(locks);
    locks_->sign();
    if (!locks_->hasFile()) {
        printDiagnostic(u"notes may not be kept: cannot write to "_s + folder_);
    }
    return true;
}

int DataFolderLock::waitForLock()
{
    if (waiting_) {
        return waiting_->news.number();
    }
    auto waiting = std::make_shared<Waiting>();
    if (!waiting->news.isOpen()) {
        return -1;
    }
    try {
        std::thread([waiting, folder = QFile::encodeName(folder_),
                     file = QFile::encodeName(file_)] {
            auto locks = std::make_unique<Locks>();
            if (locks->take(folder, file, true) != Locks::Outcome::Held) {
                return;
            }
            const std::scoped_lock guard(waiting->mutex);
            if (!waiting->isAbandoned) {
                waiting->taken = std::move(locks);
                ::eventfd_write(waiting->news.number(), 1);
            }
        }).detach();
    } catch (const std::system_error &) {
        return -1;
    }
    waiting_ = std::move(waiting);
    return waiting_->news.number();
}

qint64 DataFolderLock::owner() const
{
    QFile file(file_);
    return file.open(QIODevice::ReadOnly) ? file.readLine(maxDigits).trimmed().toLongLong() : 0;
}

} // namespace vellumo
