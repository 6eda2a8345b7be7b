// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <QUuid>
#include <optional>

namespace vellumo {

/// The ids of deleted notes, in a text file with one id per line. The server knows no deletion, and
/// other programs may bring older copies of the notes file. Main thread only.
class DeletedNotes {
public:
    /// Reads the file, if there is one. Lines that are no id are ignored, and lost with the next
    /// save.
    explicit DeletedNotes(QString path);

    [[nodiscard]] bool contains(const QUuid &id) const { return ids_.contains(id); }
    void insert(const QUuid &id);
    void remove(const QUuid &id);

    /// Writes the file if it differs from the ids. Returns the system's message after a failure,
    /// which the next call repeats.
    [[nodiscard]] std::optional<QString> save();

private:
    QString path_;
    QSet<QUuid> ids_;
    bool isSaved_ = true;
};

} // namespace vellumo
