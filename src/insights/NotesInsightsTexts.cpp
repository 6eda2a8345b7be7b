// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/NotesInsights.h"

#include "library/NotePlace.h"
#include "library/NotesLibrary.h"
#include "notes/NoteDates.h"
#include "ui/BilingualText.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QString countText(const QString &name, int count, bool english)
{
    if (english && count == 1) {
        return u"%1: one note"_s.arg(name);
    }
    return (english ? u"%1: %2 notes"_s : u"%1：%2 条"_s).arg(name, QString::number(count));
}

} // namespace

QString NotesInsights::summary() const
{
    if (library_.total() == 0) {
        return texts_.pick(u"Your reading statistics will appear here."_s,
                           u"读过之后，这里会显示你的阅读轨迹。"_s);
    }
    if (published_.total == 1) {
        return texts_.pick(u"One note so far."_s, u"目前有 1 条笔记。"_s);
    }
    if (published_.activeDays == 0) { // all notes are in the future
        return texts_.pick(u"%1 notes."_s, u"%1 条笔记。"_s).arg(published_.total);
    }
    if (published_.activeDays == 1) {
        return texts_.pick(u"%1 notes, all on one day."_s, u"%1 条笔记，都在同一天。"_s)
            .arg(published_.total);
    }
    return texts_.pick(u"%1 notes on %2 days."_s, u"%2 天共 %1 条笔记。"_s)
        .arg(published_.total)
        .arg(published_.activeDays);
}

QString NotesInsights::dayText(int index, int count, bool english) const
{
    if (index < 0 || index >= published_.days.size()) {
        return {};
    }
    const QString day =
        NoteDates::day(published_.firstDay.addDays(index), published_.today, english);
    return count == 0 ? (english ? u"%1: none"_s : u"%1：没有"_s).arg(day)
                      : countText(day, count, english);
}

QStringList NotesInsights::weekdayNames() const
{
    const QLocale locale(texts_.isEnglish() ? QLocale::English : QLocale::Chinese);
    const auto form = texts_.isEnglish() ? QLocale::ShortFormat : QLocale::NarrowFormat;
    QStringList names;
    for (int row = 0; row < daysOfAWeek; ++row) {
        names.append(locale.standaloneDayName(published_.firstDay.addDays(row).dayOfWeek(), form));
    }
    return names;
}

QStringList NotesInsights::monthsBegun() const
{
    QStringList months;
    for (qsizetype day = 0; day < published_.days.size(); day += daysOfAWeek) {
        const QDate begin = published_.firstDay.addDays(day);
        const QDate end = begin.addDays(daysOfAWeek - 1);
        const bool begins = begin.day() == 1 || begin.month() != end.month();
        months.append(begins ? NoteDates::shortMonth(end, texts_.isEnglish()) : QString());
    }
    return months;
}

QStringList NotesInsights::monthLabels() const
{
    QStringList labels;
    for (qsizetype month = 1 - published_.months.size(); month <= 0; ++month) {
        labels.append(NoteDates::shortMonth(published_.today.addMonths(static_cast<int>(month)),
                                            texts_.isEnglish()));
    }
    return labels;
}

QString NotesInsights::monthText(int index, int count, bool english) const
{
    const QDate month =
        published_.today.addMonths(index + 1 - static_cast<int>(published_.months.size()));
    return countText(NoteDates::monthAndYear(month, english), count, english);
}

QStringList NotesInsights::languageNames() const
{
    QStringList names;
    const QList<LanguageShare> all = shares();
    for (const LanguageShare &share : all) {
        names.append(share.language == ReadingLanguage::Count
                         ? texts_.pick(u"Others"_s, u"其他"_s)
                         : nameOf(share.language, texts_.isEnglish()));
    }
    return names;
}

QStringList NotesInsights::placeNames() const
{
    QStringList names;
    for (const ReadingContext &place : published_.places) {
        names.append(placeOf(place, texts_.isEnglish()));
    }
    return names;
}

QStringList NotesInsights::shareTexts() const
{
    QStringList shares;
    const QList<int> percents = languagePercents();
    for (const int percent : percents) {
        shares.append(percent == 0 ? texts_.pick(u"under 1%"_s, u"不到 1%"_s)
                                   : u"%1%"_s.arg(percent));
    }
    return shares;
}

QString NotesInsights::languageText(const QString &name, const QString &share, int count,
                                    bool english)
{
    return (english ? u"%1: %2, notes: %3"_s : u"%1：%2，%3 条"_s)
        .arg(name, share, QString::number(count));
}

QString NotesInsights::placeText(const QString &name, int count, bool english)
{
    return countText(name, count, english);
}

QString NotesInsights::placesNote() const
{
    const qsizetype shown = published_.places.size();
    return published_.allPlaces <= shown
        ? QString()
        : texts_.pick(u"Top %1 of %2"_s, u"前 %1 个来源，共 %2 个"_s)
              .arg(shown)
              .arg(published_.allPlaces);
}

} // namespace vellumo
