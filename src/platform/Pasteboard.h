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

/// One item of the pasteboard: its types in order, each with its bytes. X11 has exactly one item,
/// whose types are target names.
using PasteboardItem = QList<std::pair<QString, QByteArray>>;

/// Returns a text under the names by which applications of X11 and of Wayland ask for it.
[[nodiscard]] QList<PasteboardItem> plainText(const QString &text);

/// The clipboard. Contents belong to other processes, which may be slow, huge or hostile: every
/// read has a deadline and a size limit. Main thread only.
class Pasteboard : public QObject {
    Q_OBJECT

public:
    /// Returns a number that grows each time the owner of the contents changes.
    [[nodiscard]] virtual quint64 changeCount() = 0;

    /// Returns whether the window system names the owner. Where it does not, the application in
    /// front when the contents changed is taken for the owner.
    [[nodiscard]] virtual bool namesOwners() const { return true; }

    /// Returns the process that owns the contents; absent for an empty pasteboard and for an
    /// unknown process, such as one of another machine.
    [[nodiscard]] virtual std::optional<qint64> ownerProcess() = 0;

    /// Blocks, without running an event loop, until the process has become the owner since the
    /// change count was `count`. Returns the time that the process gave for this, in the lower 32
    /// bits of Event::timestampMs; absent at the deadline.
    [[nodiscard]] virtual std::optional<quint32> waitForOwner(qint64 process, quint64 count,
                                                              QDeadlineTimer deadline) = 0;

    /// Returns all items with the bytes of every type; an empty list for an empty pasteboard.
    /// Absent when the contents could not be read completely and therefore not be restored either.
    [[nodiscard]] virtual std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) = 0;

    /// Returns the contents as plain text; absent without such a type. Invalid UTF-8 is replaced by
    /// U+FFFD.
    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;

    virtual void clear() = 0;

    /// Becomes the owner with these items and serves them until another owner takes over. At exit
    /// they are handed to the desktop's clipboard manager, if there is one.
    virtual void write(const QList<PasteboardItem> &items) = 0;

Q_SIGNALS:
    /// Emitted from the event loop, once for several changes.
    void ownerChanged();
};

/// The state of the text that was published last.
struct Publication {
    qint64 processIdentifier = 0;
    std::chrono::milliseconds age{0}; ///< since it was published
    /// Whether the selection has ended since: by a press of a mouse button in the application,
    /// another of its windows in front, or another title of the window.
    bool isOver = false;
    /// Time since its text was last read here; absent before the first read. Text that was
    /// published before this program started counts as read at the start.
    std::optional<std::chrono::milliseconds> sinceRead;
};

/// Text that an application published by selecting it. It stays published after the selection has
/// ended. Platforms without it have no such object. Main thread only.
class PrimarySelection {
public:
    virtual ~PrimarySelection() = default;

    /// Returns the state of the published text; absent when nothing is published, or by a process
    /// of another machine.
    [[nodiscard]] virtual std::optional<Publication> publication() = 0;

    /// Returns whether the process has published anything since this program started.
    [[nodiscard]] virtual bool publishes(qint64 processIdentifier) = 0;

    /// Returns the published text; absent when there is none or its owner does not answer in time.
    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;
};

} // namespace vellumo
