// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/MarkdownNotes.h"

#include "export/NotesFormat.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"

#include <QDateTime>
#include <QTextBoundaryFinder>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo::MarkdownNotes {

namespace {

constexpr qsizetype maxTitleLength = 80; ///< in UTF-16 units

/// Characters that are markup anywhere in a line.
bool isMarkup(QChar c)
{
    return u"\\`*_[]{}<>#|~&$^"_s.contains(c);
}

/// Returns whether the character at this position begins a list, a rule or an underlined heading.
bool beginsBlock(QStringView line, qsizetype at)
{
    const QChar c = line[at];
    if (c == u'-' || c == u'+' || c == u'=' || c == u':') {
        return at == 0;
    }
    const bool isAfterDigits = (c == u'.' || c == u')') && at > 0
        && std::all_of(line.begin(), line.begin() + at,
                       [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    return isAfterDigits;
}

void appendLine(QString &result, QStringView line)
{
    // leading white space would make the line code
    qsizetype indent = 0;
    while (indent < line.size() && line[indent].isSpace()) {
        result += line[indent] == u'\t' ? QString(4, QChar::Nbsp) : QString(QChar::Nbsp);
        ++indent;
    }
    line = line.sliced(indent);
    for (qsizetype i = 0; i < line.size(); ++i) {
        // list numbers have few digits
        const bool isMark = isMarkup(line[i]) || (i < 12 && beginsBlock(line, i));
        if (isMark) {
            result += u'\\';
        }
        result += line[i];
    }
}

/// Returns the first words of the text on one line, and whether they are the whole text.
std::pair<QString, bool> titleOf(const QString &text)
{
    const QString trimmed =
        writableText(text.first(std::min(text.size(), 4 * maxTitleLength))).simplified();
    const bool isWhole = text.size() <= maxTitleLength && !text.trimmed().contains(u'\n');
    if (trimmed.size() <= maxTitleLength) {
        return {trimmed, isWhole && trimmed == writableText(text).trimmed()};
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, trimmed);
    finder.setPosition(maxTitleLength);
    const qsizetype end = finder.isAtBoundary() ? finder.position() : finder.toPreviousBoundary();
    return {trimmed.first(std::max<qsizetype>(end, 1)) + u'…', false};
}

QString source(const NoteWithContext &entry)
{
    const QUrl page = pageOf(entry.context);
    QString name = escaped(placeName(entry.context).simplified());
    if (page.isEmpty()) {
        return name;
    }
    const QString address = QString::fromLatin1(page.toEncoded())
                                .replace(u'<', u"%3C"_s)
                                .replace(u'>', u"%3E"_s)
                                .replace(u'\\', u"%5C"_s);
    return u"["_s + (name.isEmpty() ? escaped(page.host()) : name) + u"](<"_s + address + u">)"_s;
}

void appendExchange(QString &text, const FollowUpExchange &exchange, bool english)
{
    text +=
        (english ? u"**Question:** "_s : u"**追问:** "_s) + escaped(exchange.question) + u"\n\n"_s;
    text += (english ? u"**Answer:** "_s : u"**回答:** "_s) + escaped(exchange.answer) + u"\n\n"_s;
}

} // namespace

QString escaped(const QString &text, const QString &prefix)
{
    QString result;
    result.reserve(text.size() + text.size() / 8);
    bool isInParagraph = false;
    bool isGap = false; // an empty line is needed before the next one
    const QString writable = writableText(text);
    for (QStringView line : QStringView(writable).tokenize(u'\n')) {
        while (!line.isEmpty() && line.last().isSpace()) {
            line.chop(1);
        }
        if (line.isEmpty()) {
            isGap = isInParagraph;
            continue;
        }
        if (isInParagraph) {
            result += isGap ? u'\n' + prefix.trimmed() + u'\n' : u"\\\n"_s;
        }
        result += prefix;
        appendLine(result, line);
        isInParagraph = true;
        isGap = false;
    }
    return result;
}

QByteArray head(qsizetype count, QDate today, bool english)
{
    const QString date = NoteDates::fullDate(today, english);
    const QString text = english
        ? u"# Reading notes\n\n%1, exported on %2\n\n"_s.arg(
            count == 1 ? u"One note"_s : u"%1 notes"_s.arg(count), date)
        : u"# 阅读笔记\n\n%1 条笔记,导出于 %2\n\n"_s.arg(QString::number(count), date);
    return text.toUtf8();
}

QByteArray note(const NoteWithContext &entry, const NoteWithContext *before, bool english)
{
    const ReadingNote &note = entry.note;
    const QDateTime time = NoteDates::localTime(note.createdAt);
    const bool beginsDay =
        !before || NoteDates::localTime(before->note.createdAt).date() != time.date();
    QString text;
    if (beginsDay) {
        text += u"## "_s + NoteDates::fullDate(time.date(), english) + u"\n\n"_s;
    }
    const auto [title, isWhole] = titleOf(note.sourceText);
    text += u"### "_s + (title.isEmpty() ? u"…"_s : escaped(title)) + u"\n\n"_s;
    if (!isWhole && !title.isEmpty()) {
        text += escaped(note.sourceText, u"> "_s) + u"\n\n"_s;
    }
    for (const QString &part : {note.translation, note.explanation}) {
        if (!part.trimmed().isEmpty()) {
            text += escaped(part) + u"\n\n"_s;
        }
    }
    for (const FollowUpExchange &exchange : note.followUps) {
        appendExchange(text, exchange, english);
    }
    const QString place = source(entry);
    text +=
        place + (place.isEmpty() ? QString() : u" · "_s) + NoteDates::clockTime(time) + u"\n\n"_s;
    return text.toUtf8();
}

} // namespace vellumo::MarkdownNotes
