// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/NotesExport.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <unistd.h>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto reportInterval = 50ms;

using Outcome = NotesExport::Outcome;

/// Returns the reason of a failed write. A short write does not set it, so that one more byte is
/// written.
QString writeProblem(const QSaveFile &file)
{
    const bool isExplained = file.handle() < 0 || ::write(file.handle(), "\n", 1) == 1;
    return isExplained ? file.errorString() : qt_error_string(errno);
}

/// Classifies a failure for the user who chose the file.
NotesExport::Result failure(const QSaveFile &file, const QString &words)
{
    const auto isOneOf = [&words](std::initializer_list<int> errors) {
        return std::any_of(errors.begin(), errors.end(),
                           [&words](int error) { return words == qt_error_string(error); });
    };
    const QFileInfo existing(file.fileName());
    const QFileInfo folder(existing.absolutePath());
    if (isOneOf({ENOSPC, EDQUOT, EFBIG})) {
        return {Outcome::NoSpace, words};
    }
    if (!folder.isDir()) {
        return {Outcome::NoFolder, words};
    }
    const bool isForbidden = isOneOf({EACCES, EPERM, EROFS}) || !folder.isWritable()
        || (existing.exists() && !existing.isWritable());
    return {isForbidden ? Outcome::NotAllowed : Outcome::Failed, words};
}

} // namespace

NotesExport::~NotesExport()
{
    isCancelled_ = true;
    if (worker_.joinable()) {
        worker_.join();
    }
}

void NotesExport::start(Order order)
{
    Q_ASSERT(!isRunning());
    isCancelled_ = false;
    worker_ = std::thread([this, order = std::move(order)] {
        const Result result = write(order);
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    });
}

void NotesExport::finish(const Result &result)
{
    worker_.join();
    Q_EMIT finished(result);
}

void NotesExport::report(qsizetype written)
{
    const auto emitProgress = [this, written] {
        if (isRunning()) {
            Q_EMIT progressed(written);
        }
    };
    QMetaObject::invokeMethod(this, emitProgress, Qt::QueuedConnection);
}

NotesExport::Result NotesExport::write(const Order &order)
{
    const NotesFormat format =
        notesFormat(order.format, order.chosen.size(), order.at, order.isEnglish);
    QSaveFile file(order.path);
    // QSaveFile would replace a device by a file
    if (const QFileInfo existing(order.path); existing.exists() && !existing.isFile()) {
        return {Outcome::NotAFile, {}};
    }
    if (!file.open(QIODevice::WriteOnly)) {
        return failure(file, file.errorString());
    }
    // Notes are private, also on a shared machine.
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(format.head);
    const NoteWithContext *before = nullptr;
    QElapsedTimer sinceReport;
    sinceReport.start();
    for (qsizetype i = 0; i < order.chosen.size(); ++i) {
        if (isCancelled_) {
            return {Outcome::Cancelled, {}};
        }
        const NoteWithContext &entry = order.notes[order.chosen[i]];
        if (file.write(format.note(entry, before)) < 0) {
            return failure(file, writeProblem(file));
        }
        before = &entry;
        if (sinceReport.hasExpired(std::chrono::milliseconds(reportInterval).count())) {
            report(i + 1);
            sinceReport.start();
        }
    }
    if (file.write(format.tail) < 0 || !file.flush()) {
        return failure(file, writeProblem(file));
    }
    return file.commit() ? Result{Outcome::Written, {}} : failure(file, file.errorString());
}

} // namespace vellumo
