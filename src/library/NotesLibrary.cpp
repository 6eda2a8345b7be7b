// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NotesLibrary.h"

#include "library/NotePlace.h"
#include "notes/NoteDates.h"
#include "platform/Clock.h"
#include "ui/BilingualText.h"
#include "ui/WordMarks.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr qsizetype latestCount = 5;
/// Longest time that a search takes of one turn of the event loop.
constexpr auto slice = 25ms;
constexpr qsizetype notesPerTimeCheck = 64;

QList<int> upTo(qsizetype count)
{
    QList<int> indices(count);
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

} // namespace

NotesLibrary::NotesLibrary(NotesStoring &store, const Clock &clock, BilingualText &texts,
                           QObject *parent)
    : QObject(parent)
    , store_(store)
    , clock_(clock)
    , texts_(texts)
    , rows_([this] {
        return NoteRowsModel::TextContext{texts_.isEnglish(), today_};
    })
    , latest_([this] {
        return NoteRowsModel::TextContext{texts_.isEnglish(), today_};
    })
    , slices_(slice, [this] { return searchSome(); })
{
    connect(&store_, &NotesStoring::vellumoNotesDidChange, this, &NotesLibrary::storeChanged);
    connect(&texts_, &BilingualText::languageChanged, this, [this] {
        rows_.refreshTexts();
        latest_.refreshTexts();
        Q_EMIT changed();
    });
    connect(&selection_, &NoteSelection::changed, this, &NotesLibrary::changed);
    connect(&slices_, &WorkSlices::postponed, this, &NotesLibrary::changed);
    connect(&slices_, &WorkSlices::finished, this, &NotesLibrary::showFound);
    refreshing_.setSingleShot(true);
    connect(&refreshing_, &QTimer::timeout, this, &NotesLibrary::refresh);
}

void NotesLibrary::setShown(bool shown)
{
    isShown_ = shown;
    const QDate today = NoteDates::localTime(clock_.secondsSinceReferenceDate()).date();
    if (shown && (isStale_ || today != today_)) {
        refresh();
    }
}

void NotesLibrary::storeChanged()
{
    isStale_ = true;
    if (isShown_) {
        refreshing_.start(); // combines consecutive changes
    }
}

void NotesLibrary::refresh()
{
    isStale_ = false;
    notes_ = store_.allNotesWithContexts();
    today_ = NoteDates::localTime(clock_.secondsSinceReferenceDate()).date();
    Q_EMIT latestAboutToRefresh();
    latest_.setNotes(notes_, upTo(std::min(latestCount, notes_.size())), {});
    Q_EMIT latestRefreshed();
    isRefreshing_ = true;
    startSearch(false);
    Q_EMIT notesChanged();
}

QString NotesLibrary::marked(const QString &text, const QColor &color) const
{
    return WordMarks::markup(text, query_, color);
}

void NotesLibrary::setQuery(const QString &query)
{
    if (query == query_) {
        return;
    }
    query_ = query;
    rows_.unfoldAll();
    NoteSearch next(query);
    const bool narrowed = !slices_.isActive() && !search_.isEmpty() && next.narrows(search_);
    search_ = std::move(next);
    isRefreshing_ = false;
    startSearch(narrowed);
}

void NotesLibrary::narrow(const Narrowing &narrowing)
{
    if (narrowing == narrowing_) {
        return;
    }
    narrowing_ = narrowing;
    rows_.unfoldAll();
    if (const auto &days = narrowing_.days) {
        begin_ = NoteDates::startOf(days->first);
        end_ = NoteDates::startOf(days->last.addDays(1));
    }
    isRefreshing_ = false;
    startSearch(false);
    Q_EMIT narrowingChanged();
}

QString NotesLibrary::countText() const
{
    if (selection_.isActive()) {
        return texts_.pick(u"%1 selected"_s, u"已选 %1 条"_s).arg(selection_.count());
    }
    if (!isFiltered()) {
        return QString::number(total());
    }
    return isSearching() ? texts_.pick(u"Searching…"_s, u"正在搜索…"_s)
                         : texts_.pick(u"%1 of %2"_s, u"%1 / %2"_s).arg(found()).arg(total());
}

QString NotesLibrary::narrowingText() const
{
    const bool english = texts_.isEnglish();
    if (const auto &place = narrowing_.place) {
        return texts_.pick(u"From %1"_s, u"来自 %1"_s).arg(placeOf(*place, english));
    }
    if (const auto &days = narrowing_.days) {
        return days->first == days->last ? NoteDates::day(days->first, today_, english)
                                         : NoteDates::monthAndYear(days->first, english);
    }
    return {};
}

QString NotesLibrary::widenText() const
{
    return isNarrowed()
        ? texts_.pick(u"%1. Show all notes"_s, u"%1，显示全部笔记"_s).arg(narrowingText())
        : QString();
}

bool NotesLibrary::matches(const NoteWithContext &entry) const
{
    if (narrowing_.place && !isSamePlace(*narrowing_.place, entry.context)) {
        return false;
    }
    if (narrowing_.days && (entry.note.createdAt < begin_ || entry.note.createdAt >= end_)) {
        return false;
    }
    return search_.matches(entry);
}

void NotesLibrary::arrange(NoteRowsModel::Arrangement arrangement)
{
    if (arrangement != arrangement_) {
        arrangement_ = arrangement;
        if (!slices_.isActive()) { // otherwise the result of the search is arranged
            rows_.setNotes(searchedNotes_, shown_, arrangement_);
        }
        Q_EMIT changed();
    }
}

void NotesLibrary::startSearch(bool narrowed)
{
    slices_.stop();
    candidates_ = narrowed ? shown_ : upTo(notes_.size());
    if (!isFiltered()) {
        hits_ = candidates_;
        showFound();
        return;
    }
    hits_.clear();
    searched_ = 0;
    slices_.start();
}

bool NotesLibrary::searchSome()
{
    const qsizetype end = std::min(searched_ + notesPerTimeCheck, candidates_.size());
    for (; searched_ < end; ++searched_) {
        if (matches(notes_[candidates_[searched_]])) {
            hits_.append(candidates_[searched_]);
        }
    }
    return searched_ < candidates_.size();
}

void NotesLibrary::showFound()
{
    shown_ = std::exchange(hits_, {});
    searchedNotes_ = notes_;
    candidates_.clear();
    const bool isRefresh = std::exchange(isRefreshing_, false);
    if (isRefresh) {
        Q_EMIT rowsAboutToRefresh();
    }
    rows_.setNotes(searchedNotes_, shown_, arrangement_);
    Q_EMIT changed();
    if (isRefresh) {
        Q_EMIT rowsRefreshed();
    }
}

bool NotesLibrary::hasFound() const
{
    return isFiltered() && !shown_.isEmpty() && !isSearching();
}

QString NotesLibrary::idOf(const NoteWithContext *entry)
{
    return entry != nullptr ? entry->note.id.toString() : QString();
}

int NotesLibrary::rowOf(const QString &id) const
{
    return rows_.rowOf(QUuid(id));
}

int NotesLibrary::latestRowOf(const QString &id) const
{
    return latest_.rowOf(QUuid(id));
}

const NoteWithContext *NotesLibrary::find(const QUuid &id) const
{
    const auto found =
        std::find_if(notes_.begin(), notes_.end(),
                     [&id](const NoteWithContext &entry) { return entry.note.id == id; });
    return found != notes_.end() ? &*found : nullptr;
}

NotesLibrary::Excerpt NotesLibrary::allNotes() const
{
    return {notes_, upTo(notes_.size())};
}

NotesLibrary::Excerpt NotesLibrary::selectedNotes() const
{
    QList<int> selected;
    selected.reserve(selection_.count());
    for (int i = 0; i < notes_.size(); ++i) {
        if (selection_.contains(notes_[i].note.id)) {
            selected.append(i);
        }
    }
    return {notes_, selected};
}

} // namespace vellumo
