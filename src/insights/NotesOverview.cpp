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

QString NotesOverview::lastMonthName() const
{
    return NoteDates::month(library_.today().addMonths(-1), texts_.isEnglish());
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
            continue; // another computer's clock
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
