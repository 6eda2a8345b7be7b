// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "WindowDesk.h"

namespace vellumo::test {

inline NoteWithContext noteOf(double secondsAgo, const QString &source)
{
    NoteWithContext entry;
    entry.note.id = QUuid::createUuid();
    entry.note.sourceText = source;
    entry.note.explanation = QStringLiteral("explained");
    entry.note.createdAt = eveningOfTheDay - secondsAgo;
    entry.context = {QStringLiteral("web-url:https://a.test/1"), QStringLiteral("a.test"),
                     ReadingContextSource::webURL};
    return entry;
}

/// Makes one note for each hour, the newest first: "note 0" and so on.
inline QList<NoteWithContext> notes(int count)
{
    QList<NoteWithContext> list;
    for (int i = 0; i < count; ++i) {
        list.append(noteOf(i * 3600.0, QStringLiteral("note %1").arg(i)));
    }
    return list;
}

} // namespace vellumo::test
