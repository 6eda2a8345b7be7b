// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/JsonNotes.h"

#include "export/NotesFormat.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace vellumo::JsonNotes {

namespace {

QString instant(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace

QByteArray head(const QDateTime &at)
{
    return "{\n\"format\": \"vellumo-notes\",\n\"version\": 1,\n\"exportedAt\": \""
        + instant(at).toLatin1() + "\",\n\"notes\": [";
}

QByteArray note(const NoteWithContext &entry, bool isFirst)
{
    const ReadingNote &note = entry.note;
    QJsonArray followUps;
    for (const FollowUpExchange &exchange : note.followUps) {
        followUps.append(QJsonObject{{u"id"_s, idText(exchange.id)},
                                     {u"question"_s, exchange.question},
                                     {u"answer"_s, exchange.answer}});
    }
    const QUrl page = pageOf(entry.context);
    const QJsonObject place{
        {u"name"_s, placeName(entry.context)},
        {u"kind"_s, stringValue(entry.context.source)},
        {u"link"_s, page.isEmpty() ? QJsonValue() : QString::fromLatin1(page.toEncoded())}};
    const QJsonObject object{{u"id"_s, idText(note.id)},
                             {u"createdAt"_s, instant(NoteDates::localTime(note.createdAt))},
                             {u"sourceText"_s, note.sourceText},
                             {u"translation"_s, note.translation},
                             {u"explanation"_s, note.explanation},
                             {u"followUps"_s, followUps},
                             {u"place"_s, place}};
    return (isFirst ? "\n" : ",\n") + QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray tail()
{
    return "\n]\n}\n";
}

} // namespace vellumo::JsonNotes
