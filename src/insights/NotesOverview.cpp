// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/NotesOverview.h"

#include "insights/PlaceCount.h"
#include "library/NotePlace.h"
#include "library/NotesLibrary.h"
#include "notes/NoteDates.h"
#include "platform/Clock.h"
#include "ui/BilingualText.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int shownDays = 14;
constexpr int placesOverDays = 30;
constexpr qsizetype recentPlaces = 3;

} // namespace

NotesOverview::NotesOverview(NotesLibrary &library, const Clock &clock, BilingualText &texts,
                             QObject *parent)
    : QObject(parent)
    , library_(library)
    , clock_(clock)
    , texts_(texts)
    , days_(shownDays, 0)
{
    connect(&library_, &NotesLibrary::notesChanged, this, &NotesOverview::compute);
    connect(&texts_, &BilingualText::languageChanged, this, &NotesOverview::compute);
}

NotesOverview::PartOfDay NotesOverview::partOfDayNow() const
{
    const int hour = NoteDates::localTime(clock_.secondsSinceReferenceDate()).time().hour();
    if (hour >= 5 && hour < 12) {
        return PartOfDay::Morning;
    }
    return hour >= 12 && hour < 18 ? PartOfDay::Afternoon : PartOfDay::Evening;
}

void NotesOverview::followClock()
{
    if (std::exchange(partOfDay_, partOfDayNow()) != partOfDay_) {
        Q_EMIT changed();
    }
}

QString NotesOverview::greeting() const
{
    switch (partOfDay_) {
    case PartOfDay::Morning:
        return texts_.pick(u"Good morning"_s, u"早上好"_s);
    case PartOfDay::Afternoon:
        return texts_.pick(u"Good afternoon"_s, u"下午好"_s);
    case PartOfDay::Evening:
        break;
    }
    return texts_.pick(u"Good evening"_s, u"晚上好"_s);
}

QString NotesOverview::summary() const
{
    if (today_ == 0) {
        return texts_.pick(u"Nothing looked up today."_s, u"今天还没有查过内容。"_s);
    }
    if (todayPlace_.isEmpty()) {
        return today_ == 1
            ? texts_.pick(u"You looked up one thing today."_s, u"今天查了 1 次。"_s)
            : texts_.pick(u"You looked up %1 things today."_s, u"今天查了 %1 次。"_s).arg(today_);
    }
    if (today_ == 1) {
        return texts_
            .pick(isTodayPlaceAPage_ ? u"You looked up one thing today, on %1."_s
                                     : u"You looked up one thing today, in %1."_s,
                  u"今天查了 1 次，来自 %1。"_s)
            .arg(todayPlace_);
    }
    return texts_
        .pick(isTodayPlaceAPage_ ? u"You looked up %1 things today, mostly on %2."_s
                                 : u"You looked up %1 things today, mostly in %2."_s,
              u"今天查了 %1 次，大多来自 %2。"_s)
        .arg(QString::number(today_), todayPlace_);
}

QString NotesOverview::comparison() const
{
    const QString month = NoteDates::month(library_.today().addMonths(-1), texts_.isEnglish());
    const int difference = thisMonth_ - lastMonth_;
    if (lastMonth_ == 0) {
        return texts_.pick(u"none in %1"_s, u"%1为 0 条"_s).arg(month);
    }
    if (difference == 0) {
        return texts_.pick(u"as many as in %1"_s, u"与 %1持平"_s).arg(month);
    }
    return (difference > 0 ? texts_.pick(u"%1 more than in %2"_s, u"比 %2多 %1"_s)
                           : texts_.pick(u"%1 fewer than in %2"_s, u"比 %2少 %1"_s))
        .arg(QString::number(std::abs(difference)), month);
}

QString NotesOverview::monthText() const
{
    return QString::number(thisMonth_) + u", "_s + comparison();
}

QString NotesOverview::placesText() const
{
    QStringList parts;
    for (qsizetype i = 0; i < placeNames_.size(); ++i) {
        parts.append(placeNames_[i] + u' ' + QString::number(placeCounts_[i]));
    }
    return parts.join(u", "_s);
}

int NotesOverview::maxPerDay() const
{
    return std::max(1, *std::max_element(days_.cbegin(), days_.cend()));
}

QString NotesOverview::daysText() const
{
    QStringList parts;
    for (const int count : days_) {
        parts.append(QString::number(count));
    }
    return parts.join(u", "_s);
}

void NotesOverview::compute()
{
    const QDate date = library_.today();
    const double tomorrow = NoteDates::startOf(date.addDays(1));
    const double thisDay = NoteDates::startOf(date);
    const double recent = NoteDates::startOf(date.addDays(1 - placesOverDays));
    const QDate month(date.year(), date.month(), 1);
    const double monthBegin = NoteDates::startOf(month);
    const double lastMonthBegin = NoteDates::startOf(month.addMonths(-1));
    QList<double> dayBegins;
    for (int day = 0; day < shownDays; ++day) {
        dayBegins.append(NoteDates::startOf(date.addDays(day + 1 - shownDays)));
    }

    partOfDay_ = partOfDayNow();
    today_ = thisMonth_ = lastMonth_ = 0;
    days_.fill(0);
    PlaceCount ofToday;
    PlaceCount ofLate;
    for (const NoteWithContext &entry : library_.notes()) {
        const double time = entry.note.createdAt;
        if (time >= tomorrow) {
            continue; // in the future, by another computer's clock
        }
        if (time < std::min(lastMonthBegin, recent)) {
            break;
        }
        thisMonth_ += time >= monthBegin ? 1 : 0;
        lastMonth_ += time < monthBegin && time >= lastMonthBegin ? 1 : 0;
        if (time >= recent) {
            ofLate.add(entry.context);
        }
        if (time >= thisDay) {
            ++today_;
            ofToday.add(entry.context);
        }
        const auto day = std::upper_bound(dayBegins.begin(), dayBegins.end(), time);
        if (day != dayBegins.begin()) {
            ++days_[day - dayBegins.begin() - 1];
        }
    }

    const auto first = ofToday.top(1);
    const bool isMostly =
        !first.isEmpty() && first[0].count * 2 > today_ && !isPulled(*first[0].context);
    isTodayPlaceAPage_ = isMostly && first[0].context->source == ReadingContextSource::webURL;
    todayPlace_ = isMostly ? placeOf(*first[0].context, texts_.isEnglish()) : QString();
    placeNames_.clear();
    placeCounts_.clear();
    for (const PlaceCount::Entry &entry : ofLate.top(recentPlaces)) {
        placeNames_.append(placeOf(*entry.context, texts_.isEnglish()));
        placeCounts_.append(entry.count);
    }
    Q_EMIT changed();
}

} // namespace vellumo
