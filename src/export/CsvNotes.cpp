// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/CsvNotes.h"

#include "export/NotesFormat.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace vellumo::CsvNotes {

namespace {

/// Whether a spreadsheet might calculate with the cell, or see something else in it than is there.
/// It may pass over white space and invisible characters at the beginning.
bool looksLikeFormula(QStringView text)
{
    if (!text.isEmpty() && (text[0] == u'\t' || text[0] == u'\r' || text[0] == u'\n')) {
        return true;
    }
    for (const QChar c : text) {
        if (!c.isSpace() && c.category() != QChar::Other_Format
            && c.category() != QChar::Other_Control) {
            return u"=+-@＝＋－＠"_s.contains(c);
        }
    }
    return false;
}

QByteArray line(const QStringList &texts)
{
    QStringList cells;
    for (const QString &text : texts) {
        cells.append(cell(text));
    }
    return (cells.join(u',') + u"\r\n"_s).toUtf8();
}

QString thread(const ReadingNote &note)
{
    QStringList parts;
    for (const FollowUpExchange &exchange : note.followUps) {
        parts << exchange.question << exchange.answer;
    }
    return parts.join(u"\n\n"_s);
}

} // namespace

QString cell(const QString &text)
{
    const QString mark = looksLikeFormula(text) ? u"'"_s : QString();
    return u'"' + mark + QString(writableText(text)).replace(u'"', u"\"\""_s) + u'"';
}

QByteArray head()
{
    return "\xEF\xBB\xBF"
        + line({u"front"_s, u"back"_s, u"questions"_s, u"place"_s, u"link"_s, u"date"_s, u"id"_s});
}

QByteArray row(const NoteWithContext &entry)
{
    const ReadingNote &note = entry.note;
    QStringList back{note.translation, note.explanation};
    back.removeIf([](const QString &part) { return part.trimmed().isEmpty(); });
    return line({note.sourceText, back.join(u"\n\n"_s), thread(note), placeName(entry.context),
                 QString::fromLatin1(pageOf(entry.context).toEncoded()),
                 NoteDates::localTime(note.createdAt).toString(u"yyyy-MM-dd HH:mm:ss"_s),
                 note.id.toString(QUuid::WithoutBraces).toUpper()});
}

} // namespace vellumo::CsvNotes
