// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/NotesInsights.h"

#include "library/NotePlace.h"
#include "library/NotesLibrary.h"
#include "notes/NoteDates.h"
#include "ui/BilingualText.h"

#include <QLocale>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr int shownWeeks = 53;
constexpr int shownMonths = 12;
constexpr qsizetype shownLanguages = 5;
constexpr qsizetype shownPlaces = 8;
/// Longest time that counting takes of one turn of the event loop.
constexpr auto sliceTime = 10ms;
constexpr qsizetype notesPerTimeCheck = 64;

QDate monthOf(QDate date, int monthsLater)
{
    return QDate(date.year(), date.month(), 1).addMonths(monthsLater);
}

/// Returns the index of the span that contains a time; -1 before the first.
qsizetype spanOf(const QList<double> &begins, double time)
{
    return std::distance(begins.begin(), std::upper_bound(begins.begin(), begins.end(), time)) - 1;
}

} // namespace

NotesInsights::NotesInsights(NotesLibrary &library, BilingualText &texts, QObject *parent)
    : QObject(parent)
    , library_(library)
    , texts_(texts)
    , slices_(sliceTime, [this] { return countSome(); })
{
    connect(&library_, &NotesLibrary::notesChanged, this, [this] {
        isStale_ = true;
        if (isShown_) {
            begin();
        }
    });
    connect(&texts_, &BilingualText::languageChanged, this, &NotesInsights::changed);
    connect(&slices_, &WorkSlices::finished, this, &NotesInsights::finish);
}

void NotesInsights::setShown(bool shown)
{
    if (shown == isShown_) {
        return;
    }
    isShown_ = shown;
    if (shown && isStale_) {
        begin();
    } else if (!shown && pass_) {
        slices_.stop();
        pass_.reset();
        isStale_ = true;
    }
}

void NotesInsights::begin()
{
    isStale_ = false;
    pass_ = std::make_unique<Pass>();
    pass_->notes = library_.notes();
    Figures &figures = pass_->figures;
    figures.total = static_cast<int>(pass_->notes.size());
    figures.today = library_.today();
    const int sinceWeekBegan =
        (figures.today.dayOfWeek() - QLocale().firstDayOfWeek() + daysOfAWeek) % daysOfAWeek;
    figures.firstDay = figures.today.addDays(-sinceWeekBegan - (shownWeeks - 1) * daysOfAWeek);
    figures.days.resize(figures.firstDay.daysTo(figures.today) + 1);
    figures.months.resize(shownMonths);
    for (qsizetype day = 0; day <= figures.days.size(); ++day) {
        pass_->dayBegins.append(NoteDates::startOf(figures.firstDay.addDays(day)));
    }
    for (int month = 0; month < shownMonths; ++month) {
        pass_->monthBegins.append(
            NoteDates::startOf(monthOf(figures.today, month + 1 - shownMonths)));
    }
    pass_->dayBegin = std::numeric_limits<double>::infinity();
    slices_.start();
}

bool NotesInsights::countSome()
{
    const qsizetype end = std::min(pass_->next + notesPerTimeCheck, pass_->notes.size());
    for (; pass_->next < end; ++pass_->next) {
        count(*pass_, std::as_const(pass_->notes)[pass_->next]);
    }
    return pass_->next < pass_->notes.size();
}

void NotesInsights::count(Pass &pass, const NoteWithContext &entry)
{
    Figures &figures = pass.figures;
    pass.languages.add(readingLanguage(entry.note.sourceText), pass.places.add(entry.context));
    const double time = entry.note.createdAt;
    if (!(time < pass.dayBegins.last())) {
        return; // in the future, by another computer's clock
    }
    const qsizetype day = spanOf(pass.dayBegins, time);
    if (day >= 0) {
        figures.activeDays += figures.days[day]++ == 0 ? 1 : 0;
    } else if (time < pass.dayBegin) {
        // older days: the notes are sorted, so the limits of each day are computed once
        const QDate date = NoteDates::localTime(time).date();
        pass.dayBegin = NoteDates::startOf(date);
        ++figures.activeDays;
    }
    const qsizetype month = spanOf(pass.monthBegins, time);
    if (month >= 0) {
        ++figures.months[month];
    }
}

void NotesInsights::finish()
{
    const std::unique_ptr<Pass> pass = std::move(pass_);
    pass->figures.byLanguage = pass->languages.counts();
    pass->figures.allPlaces = static_cast<int>(pass->places.size());
    const QList<PlaceCount::Entry> top = pass->places.top(shownPlaces);
    for (const PlaceCount::Entry &entry : top) {
        pass->figures.places.append(*entry.context);
        pass->figures.placeCounts.append(entry.count);
    }
    published_ = std::move(pass->figures);
    isReady_ = true;
    Q_EMIT changed();
}

QList<NotesInsights::LanguageShare> NotesInsights::shares() const
{
    QList<LanguageShare> shares;
    for (size_t i = 0; i < published_.byLanguage.size(); ++i) {
        if (published_.byLanguage[i] > 0) {
            shares.append({static_cast<ReadingLanguage>(i), published_.byLanguage[i]});
        }
    }
    // what is not known to be one language comes last
    std::stable_sort(
        shares.begin(), shares.end(), [](const LanguageShare &a, const LanguageShare &b) {
            const bool isLanguage = isDetermined(a.language);
            return isLanguage == isDetermined(b.language) ? a.count > b.count : isLanguage;
        });
    if (shares.size() > shownLanguages) {
        LanguageShare rest{ReadingLanguage::Count, 0};
        for (qsizetype i = shownLanguages - 1; i < shares.size(); ++i) {
            rest.count += shares[i].count;
        }
        shares.resize(shownLanguages - 1);
        shares.append(rest);
    }
    return shares;
}

QList<int> NotesInsights::languageCounts() const
{
    QList<int> counts;
    const QList<LanguageShare> all = shares();
    for (const LanguageShare &share : all) {
        counts.append(share.count);
    }
    return counts;
}

QList<bool> NotesInsights::determinedLanguages() const
{
    QList<bool> determined;
    const QList<LanguageShare> all = shares();
    for (const LanguageShare &share : all) {
        determined.append(isDetermined(share.language));
    }
    return determined;
}

QList<int> NotesInsights::languagePercents() const
{
    const QList<int> counts = languageCounts();
    QList<int> percents;
    QList<qsizetype> byRemainder;
    int missing = 100;
    for (const int count : counts) {
        byRemainder.append(percents.size());
        percents.append(static_cast<int>(qint64{100} * count / published_.total));
        missing -= percents.last();
    }
    std::stable_sort(byRemainder.begin(), byRemainder.end(), [&](qsizetype a, qsizetype b) {
        return qint64{100} * counts[a] % published_.total
            > qint64{100} * counts[b] % published_.total;
    });
    for (const qsizetype index : byRemainder.first(counts.isEmpty() ? 0 : missing)) {
        ++percents[index];
    }
    return percents;
}

bool NotesInsights::namesLetters() const
{
    const QList<LanguageShare> all = shares();
    return std::any_of(all.begin(), all.end(), [](const LanguageShare &share) {
        return share.language == ReadingLanguage::LatinLetters
            || share.language == ReadingLanguage::ChineseCharacters;
    });
}

QList<int> NotesInsights::placeCounts() const
{
    return published_.placeCounts;
}

std::optional<QDate> NotesInsights::dayAt(int index) const
{
    const bool isThere = index >= 0 && index < published_.days.size();
    return isThere ? std::optional(published_.firstDay.addDays(index)) : std::nullopt;
}

std::optional<QDate> NotesInsights::monthAt(int index) const
{
    const int count = static_cast<int>(published_.months.size());
    const bool isThere = index >= 0 && index < count;
    return isThere ? std::optional(monthOf(published_.today, index + 1 - count)) : std::nullopt;
}

std::optional<ReadingContext> NotesInsights::placeAt(int index) const
{
    const bool isThere = index >= 0 && index < published_.places.size();
    return isThere ? std::optional(published_.places[index]) : std::nullopt;
}

} // namespace vellumo
