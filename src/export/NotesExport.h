// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "export/NotesFormat.h"
#include <QObject>
#include <atomic>
#include <memory>
#include <thread>

namespace vellumo {

/// Writes notes to a file on a worker thread. An existing file stays until the last note is
/// written, and is then replaced atomically. The file has mode 0600. One file at a time. Main
/// thread only.
class NotesExport : public QObject {
    Q_OBJECT

public:
    struct Order {
        QList<NoteWithContext> notes;
        QList<int> chosen; ///< indexes into `notes`, in the order in which they are written
        ExportFormat format = ExportFormat::Markdown;
        bool isEnglish = true;
        QDateTime at; ///< local time of the export, written into the file
        QString path;
    };

    enum class Outcome : quint8 {
        Written,
        Cancelled,
        NoSpace,
        NotAllowed, ///< no permission to write the file or its folder
        NoFolder,
        NotAFile, ///< something else has the name, such as a folder
        Failed, ///< any other failure; see the detail
    };
    struct Result {
        Outcome outcome = Outcome::Failed;
        QString detail; ///< the system's message of a failure
    };

    using QObject::QObject;
    /// Cancels a running export and blocks until the worker has stopped.
    ~NotesExport() override;
    Q_DISABLE_COPY_MOVE(NotesExport)

    [[nodiscard]] bool isRunning() const { return worker_.joinable(); }
    /// Starts an export. None may be running.
    void start(Order order);
    /// Requests cancellation. finished() is emitted when the worker has stopped; the file may have
    /// been complete before.
    void cancel() { isCancelled_ = true; }

Q_SIGNALS:
    // Both are emitted on this object's thread.
    /// Emitted at most twenty times a second with the number of notes written so far.
    void progressed(qsizetype written);
    /// Emitted once for each start().
    void finished(const vellumo::NotesExport::Result &result);

private:
    [[nodiscard]] Result write(const Order &order);
    void report(qsizetype written);
    void finish(const Result &result);

    std::thread worker_;
    std::atomic_bool isCancelled_ = false;
};

} // namespace vellumo
