// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "export/NotesFormat.h"
#include <QObject>
#include <atomic>
#include <memory>
#include <thread>

namespace vellumo {

/// Writes notes to a file on a thread of its own, whole or not at all: until the last note is
/// written, whatever stood under the file's name stays. Only the user can read the file. One file
/// at a time.
class NotesExport : public QObject {
    Q_OBJECT

public:
    struct Order {
        QList<NoteWithContext> notes;
        QList<int> chosen; ///< which of the notes, by index, in the order in which they are written
        ExportFormat format = ExportFormat::Markdown;
        bool isEnglish = true;
        QDateTime at; ///< local time written into the file
        QString path;
    };

    enum class Outcome : quint8 {
        Written,
        Cancelled,
        NoSpace,
        NotAllowed, ///< neither the file nor its folder may be written
        NoFolder,
        NotAFile, ///< something else has the name, such as a folder
        Failed, ///< anything else; the detail says what
    };
    struct Result {
        Outcome outcome = Outcome::Failed;
        QString detail; ///< the system's words, for a failure
    };

    using QObject::QObject;
    /// Gives up what is being written, and waits until it has stopped.
    ~NotesExport() override;
    Q_DISABLE_COPY_MOVE(NotesExport)

    [[nodiscard]] bool isRunning() const { return worker_.joinable(); }
    /// Nothing may be running.
    void start(Order order);
    /// finished() reports when it has stopped, or that the file was complete before.
    void cancel() { isCancelled_ = true; }

Q_SIGNALS:
    // Both are emitted on the thread of this object.
    /// Carries how many notes are written; at most twenty times a second.
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
