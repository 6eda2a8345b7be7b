// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <QString>
#include <optional>
#include <utility>

namespace vellumo {

/// One item of the pasteboard: its types in their order, each with its bytes. X11 has exactly one
/// item; its types are target names.
using PasteboardItem = QList<std::pair<QString, QByteArray>>;

/// The clipboard. Contents belong to other processes, which may be slow, huge or hostile: every
/// read has a deadline and a size limit. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Grows each time the owner of the contents changes.
    [[nodiscard]] virtual quint64 changeCount() = 0;

    /// Blocks, without running an event loop, until the change count differs from `count` or the
    /// deadline has passed; answers whether it differs.
    virtual bool waitForChange(quint64 count, QDeadlineTimer deadline) = 0;

    /// All items with the bytes of every type; an empty list for an empty pasteboard. Absent when
    /// the contents could not be taken whole, so that they could not be put back either.
    [[nodiscard]] virtual std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) = 0;

    /// The contents as plain text, if they have such a type. Invalid UTF-8 reads as U+FFFD.
    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;

    virtual void clear() = 0;

    /// Takes the pasteboard over with these items and serves them until another owner comes; at
    /// exit they are handed to the desktop's clipboard manager, if there is one.
    virtual void write(const QList<PasteboardItem> &items) = 0;
};

/// Text that an application published by the act of selecting it. Null on platforms without it.
class PrimarySelection {
public:
    virtual ~PrimarySelection() = default;

    /// The process that published it, if there is one.
    [[nodiscard]] virtual std::optional<qint64> ownerProcess() = 0;

    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;
};

} // namespace vellumo
