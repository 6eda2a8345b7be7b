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

bool isFormulaSign(QChar c)
{
    return u"=+-@＝＋－＠"_s.contains(c);
}

/// Returns whether a program with another separator may begin a cell after the character.
bool separatesCells(QChar c)
{
    return c == u',' || c == u';' || c == u'\t' || c == u'\n';
}

/// Returns whether a spreadsheet may skip the character before a formula. Quotes are skipped as
/// those of a cell if the cell did not begin with one.
bool isPassedOver(QChar c)
{
    return c == u'"' || c.isSpace() || c.category() == QChar::Other_Format;
}

/// Inserts an apostrophe before each character that may start a formula in a spreadsheet, and
/// before a tab or line break at the beginning of a cell.
QString markFormulas(const QString &text)
{
    QString marked;
    marked.reserve(text.size() + 1);
    if (text.startsWith(u'\t') || text.startsWith(u'\n')) {
        marked += u'\'';
    }
    bool isAtBeginning = true;
    qsizetype beginning = 0; // position in `marked` where the skipped characters begin
    for (const QChar c : text) {
        if (isAtBeginning && isFormulaSign(c)) {
            marked.insert(beginning, u'\'');
        }
        marked += c;
        if (separatesCells(c)) {
            isAtBeginning = true;
            beginning = marked.size();
        } else {
            isAtBeginning = isAtBeginning && isPassedOver(c);
        }
    }
    return marked;
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
    return u'"' + markFormulas(writableText(text)).replace(u'"', u"\"\""_s) + u'"';
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
