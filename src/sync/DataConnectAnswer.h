// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QStringList>
#include <optional>

namespace vellumo {

/// What an answer of the notes service says. Of members that come twice the first one counts; what
/// it has beyond these is passed over.
struct DataConnectAnswer {
    enum class Data : quint8 { Absent, Object, Other };

    QStringList errors = {}; ///< their messages
    bool areErrorsSound = true; ///< false when they do not have the form of errors
    Data data = Data::Absent;
    bool hasInsertedId = false; ///< data.note_insert.id is a text
    std::optional<QList<ReadingNote>> notes = {}; ///< data.notes, when each has the form of a note

    /// Reads JSON in one pass, without holding more than the texts that are kept. Ids of notes that
    /// are none become fresh ones, as those of follow-ups always do; a time that is none becomes
    /// `now`. Nothing when it is no JSON object, or is nested more than eight deep. Any thread.
    [[nodiscard]] static std::optional<DataConnectAnswer> fromJson(const QByteArray &json,
                                                                   double now);
};

} // namespace vellumo
