// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <chrono>
#include <optional>
#include <utility>

namespace vellumo {

/// One item of the pasteboard: its types in their order, each with its bytes. X11 has exactly one
/// item; its types are target names.
using PasteboardItem = QList<std::pair<QString, QByteArray>>;

/// The clipboard. Contents belong to other processes, which may be slow, huge or hostile: every
/// read has a deadline and a size limit. Main thread only.
class Pasteboard : public QObject {
    Q_OBJECT

public:
    /// Grows each time the owner of the contents changes.
    [[nodiscard]] virtual quint64 changeCount() = 0;

    /// The process that owns the contents now; absent for an empty pasteboard and when it is not
    /// known, such as a process of another computer.
    [[nodiscard]] virtual std::optional<qint64> ownerProcess() = 0;

    /// Blocks, without running an event loop, until the process takes the pasteboard over, if it
    /// has not done so since the change count was `count`. Absent at the deadline; else when it did
    /// that as it says itself, in the lower 32 bits of Event::timestampMs.
    [[nodiscard]] virtual std::optional<quint32> waitForOwner(qint64 process, quint64 count,
                                                              QDeadlineTimer deadline) = 0;

    /// All items with the bytes of every type; an empty list for an empty pasteboard. Absent when
    /// the contents could not be taken whole, so that they could not be put back either.
    [[nodiscard]] virtual std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) = 0;

    /// The contents as plain text, if they have such a type. Invalid UTF-8 reads as U+FFFD.
    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;

    virtual void clear() = 0;

    /// Takes the pasteboard over with these items and serves them until another owner comes; at
    /// exit they are handed to the desktop's clipboard manager, if there is one.
    virtual void write(const QList<PasteboardItem> &items) = 0;

Q_SIGNALS:
    /// Emitted from the event loop, once for several changes.
    void ownerChanged();
};

/// What is known of the text that was published last.
struct Publication {
    qint64 processIdentifier = 0;
    std::chrono::milliseconds age{0}; ///< since it was published
    /// Whether something has happened since that ends a selection: a press of a mouse button in the
    /// application, another of its windows in front, or another title of the window.
    bool isOver = false;
    /// Since its text was last read here; absent before the first time. Text that was published
    /// before this program started counts as read at the start.
    std::optional<std::chrono::milliseconds> sinceRead;
};

/// Text that an application published by the act of selecting it. It stays published after the
/// selection is gone. Null on platforms without it. Main thread only.
class PrimarySelection {
public:
    virtual ~PrimarySelection() = default;

    /// Absent when nothing is published, or not by a process of this machine.
    [[nodiscard]] virtual std::optional<Publication> publication() = 0;

    /// Whether the process has published anything since this program started.
    [[nodiscard]] virtual bool publishes(qint64 processIdentifier) = 0;

    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;
};

} // namespace vellumo
