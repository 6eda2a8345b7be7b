// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/NotesExport.h"

#include "files/AtomicFile.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto reportInterval = 50ms;

using Outcome = NotesExport::Outcome;

/// Classifies a failure for the user who chose the file.
NotesExport::Result failure(const QString &path, const FileError &error)
{
    const auto isOneOf = [&error](const auto &codes) {
        return std::ranges::find(codes, error.code) != codes.end();
    };
    const QFileInfo folder(QFileInfo(path).absolutePath());
    if (isOneOf(std::array{ENOSPC, EDQUOT, EFBIG})) {
        return {Outcome::NoSpace, error.reason()};
    }
    if (!folder.isDir()) {
        return {Outcome::NoFolder, error.reason()};
    }
    const bool isForbidden = isOneOf(std::array{EACCES, EPERM, EROFS}) || !folder.isWritable();
    return {isForbidden ? Outcome::NotAllowed : Outcome::Failed, error.reason()};
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
    // Replacing would turn a device into a file, and ignore that a file is read-only.
    if (const QFileInfo existing(order.path); existing.exists()) {
        if (!existing.isFile()) {
            return {Outcome::NotAFile, {}};
        }
        if (!existing.isWritable()) {
            return {Outcome::NotAllowed, qt_error_string(EACCES)};
        }
    }
    // Notes are private, also on a shared machine.
    AtomicFile file(order.path, {.mode = AtomicFile::Mode::Private});
    file.write(format.head);
    const NoteWithContext *before = nullptr;
    QElapsedTimer sinceReport;
    sinceReport.start();
    for (qsizetype i = 0; i < order.chosen.size(); ++i) {
        if (isCancelled_) {
            return {Outcome::Cancelled, {}};
        }
        const NoteWithContext &entry = order.notes[order.chosen[i]];
        if (!file.write(format.note(entry, before))) {
            return failure(order.path, *file.error());
        }
        before = &entry;
        if (sinceReport.hasExpired(std::chrono::milliseconds(reportInterval).count())) {
            report(i + 1);
            sinceReport.start();
        }
    }
    return file.write(format.tail) && file.commit() ? Result{Outcome::Written, {}}
                                                    : failure(order.path, *file.error());
}

} // namespace vellumo
