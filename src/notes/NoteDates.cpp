// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "notes/NoteDates.h"

#include <QLocale>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace vellumo::NoteDates {

namespace {

QString englishText(QDate date, const QString &format)
{
    return QLocale(QLocale::English).toString(date, format);
}

QString chineseWeekday(QDate date)
{
    const QString days = u"一二三四五六日"_s;
    return u"星期"_s + days[date.dayOfWeek() - 1];
}

QString dayOfYear(QDate date, QDate today, bool english)
{
    const bool isThisYear = date.year() == today.year();
    if (english) {
        return englishText(date, isThisYear ? u"d MMMM"_s : u"d MMMM yyyy"_s);
    }
    return date.toString(isThisYear ? u"M月d日"_s : u"yyyy年M月d日"_s);
}

QString recentDay(QDate date, QDate today, bool english)
{
    if (date == today) {
        return english ? u"Today"_s : u"今天"_s;
    }
    if (date == today.addDays(-1)) {
        return english ? u"Yesterday"_s : u"昨天"_s;
    }
    return {};
}

} // namespace

QString day(QDate date, QDate today, bool english)
{
    QString recent = recentDay(date, today, english);
    if (!recent.isEmpty()) {
        return recent;
    }
    return english ? englishText(date, u"dddd, "_s) + dayOfYear(date, today, true)
                   : dayOfYear(date, today, false) + u' ' + chineseWeekday(date);
}

QString fullDate(QDate date, bool english)
{
    return day(date, {}, english);
}

QString moment(const QDateTime &time, QDate today, bool english)
{
    if (time.date() == today) {
        return clockTime(time);
    }
    QString recent = recentDay(time.date(), today, english);
    return recent.isEmpty() ? dayOfYear(time.date(), today, english) : recent;
}

QString full(const QDateTime &time, QDate today, bool english)
{
    return day(time.date(), today, english) + (english ? u", "_s : u" "_s) + clockTime(time);
}

QString clockTime(const QDateTime &time)
{
    return time.toString(u"HH:mm"_s);
}

QString month(QDate date, bool english)
{
    return english ? englishText(date, u"MMMM"_s) : date.toString(u"M 月"_s);
}

QString shortMonth(QDate date, bool english)
{
    return english ? englishText(date, u"MMM"_s) : date.toString(u"M月"_s);
}

QString monthAndYear(QDate date, bool english)
{
    return english ? englishText(date, u"MMMM yyyy"_s) : date.toString(u"yyyy年M月"_s);
}

double startOf(QDate date)
{
    return static_cast<double>(date.startOfDay().toMSecsSinceEpoch()) / 1000 - referenceDate;
}

} // namespace vellumo::NoteDates
