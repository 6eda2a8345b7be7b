// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

namespace vellumo {

/// The kind of place where something was read.
enum class ReadingContextSource : quint8 { webURL, filePath, appWindow, windowSession };

/// Returns the name under which a kind of place is stored.
[[nodiscard]] QString stringValue(ReadingContextSource source);
[[nodiscard]] std::optional<ReadingContextSource> readingContextSource(QStringView stringValue);

/// Where something was read. Notes with the same key belong together.
struct ReadingContext {
    QString key; ///< compared as an exact string
    QString displayName; ///< page title, host, file name or window title
    ReadingContextSource source = ReadingContextSource::windowSession;
    friend bool operator==(const ReadingContext &, const ReadingContext &) = default;
};

size_t qHash(const ReadingContext &context, size_t seed = 0);

/// The key of notes from the user's other devices, whose place is not known.
inline constexpr QLatin1StringView cloudKey{"cloud"};

/// One question asked after an explanation, with the answer that was shown.
struct FollowUpExchange {
    QUuid id;
    QString question;
    QString answer;
    friend bool operator==(const FollowUpExchange &, const FollowUpExchange &) = default;
};

/// One saved explanation of one selection. Only the follow-ups change after creation.
struct ReadingNote {
    QUuid id;
    QString sourceText;
    QString translation; ///< may be empty
    QString explanation;
    double createdAt = 0; ///< seconds since 2001-01-01 00:00:00 UTC; may be fractional or negative
    QList<FollowUpExchange> followUps; ///< in the order they were asked
    friend bool operator==(const ReadingNote &, const ReadingNote &) = default;
};

struct NoteWithContext {
    ReadingNote note;
    ReadingContext context;
};

} // namespace vellumo
