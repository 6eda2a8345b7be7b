// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "library/NoteRowsModel.h"
#include "library/NoteSearch.h"
#include "library/NoteSelection.h"
#include "notes/NotesStoring.h"
#include "platform/WorkSlices.h"
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace vellumo {

class BilingualText;
class Clock;

/// All notes for the window: what is in the store, searched and grouped. Follows the store while it
/// is shown. A long search goes on in slices, so that typing is never held up.
class NotesLibrary : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QObject *rows READ rows CONSTANT)
    Q_PROPERTY(QObject *latest READ latest CONSTANT)
    Q_PROPERTY(vellumo::NoteSelection *selection READ selection CONSTANT)
    Q_PROPERTY(int total READ total NOTIFY changed)
    Q_PROPERTY(int found READ found NOTIFY changed)
    Q_PROPERTY(bool hasFound READ hasFound NOTIFY changed)
    Q_PROPERTY(QString countText READ countText NOTIFY changed)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY changed)
    Q_PROPERTY(bool isOfOnePlace READ isOfOnePlace NOTIFY changed)
    Q_PROPERTY(QString placeText READ placeText NOTIFY changed)
    Q_PROPERTY(QString leavePlaceText READ leavePlaceText NOTIFY changed)
    Q_PROPERTY(bool isFiltered READ isFiltered NOTIFY changed)
    Q_PROPERTY(
        vellumo::NoteRowsModel::Grouping grouping READ grouping WRITE setGrouping NOTIFY changed)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY changed)

public:
    /// Some of the notes of a list, by index, newest first.
    struct Excerpt {
        QList<NoteWithContext> notes;
        QList<int> chosen;
    };

    /// What is handed over must outlive the library.
    NotesLibrary(NotesStoring &store, const Clock &clock, BilingualText &texts,
                 QObject *parent = nullptr);

    /// While it is not shown it does not follow the store.
    void setShown(bool shown);

    /// Newest first.
    [[nodiscard]] const QList<NoteWithContext> &notes() const { return notes_; }
    [[nodiscard]] QDate today() const { return today_; }

    [[nodiscard]] QAbstractItemModel *rows() { return &rows_; }
    [[nodiscard]] NoteSelection *selection() { return &selection_; }
    [[nodiscard]] Excerpt allNotes() const;
    /// The notes that fit query and place; during a search, what the one before has found.
    [[nodiscard]] Excerpt foundNotes() const { return {searchedNotes_, shown_}; }
    [[nodiscard]] Excerpt selectedNotes() const;
    /// The last few, ungrouped.
    [[nodiscard]] QAbstractItemModel *latest() { return &latest_; }
    [[nodiscard]] int total() const { return static_cast<int>(notes_.size()); }
    /// How many fit query and place.
    [[nodiscard]] int found() const { return static_cast<int>(shown_.size()); }
    /// Whether something was looked for, and is found.
    [[nodiscard]] bool hasFound() const;
    /// How many notes the list has, of how many.
    [[nodiscard]] QString countText() const;
    [[nodiscard]] bool isSearching() const { return slices_.isActive(); }

    [[nodiscard]] QString query() const { return query_; }
    void setQuery(const QString &query);

    /// Only the notes of a place, if one is given, are searched and shown. Any of its contexts
    /// names it.
    void setPlace(const std::optional<ReadingContext> &place);
    Q_INVOKABLE void leavePlace() { setPlace(std::nullopt); }
    [[nodiscard]] bool isOfOnePlace() const { return place_.has_value(); }
    /// Says that only notes of the place are shown; empty without a place.
    [[nodiscard]] QString placeText() const;
    /// The same, and what leavePlace() does, for screen readers.
    [[nodiscard]] QString leavePlaceText() const;
    /// Whether there is a query or a place.
    [[nodiscard]] bool isFiltered() const { return isOfOnePlace() || !search_.isEmpty(); }

    /// By day or by place.
    [[nodiscard]] NoteRowsModel::Grouping grouping() const { return grouping_; }
    void setGrouping(NoteRowsModel::Grouping grouping);

    Q_INVOKABLE [[nodiscard]] bool isHeading(int row) const { return noteAt(row) == nullptr; }
    [[nodiscard]] const NoteWithContext *noteAt(int row) const { return rows_.noteAt(row); }
    [[nodiscard]] const NoteWithContext *latestAt(int row) const { return latest_.noteAt(row); }
    /// What a note in a row is known by through a refresh; empty without a note. Its row
    /// afterwards; -1 without one.
    Q_INVOKABLE [[nodiscard]] QString idAt(int row) const { return idOf(noteAt(row)); }
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &id) const;
    Q_INVOKABLE [[nodiscard]] QString latestIdAt(int row) const { return idOf(latestAt(row)); }
    Q_INVOKABLE [[nodiscard]] int latestRowOf(const QString &id) const;
    [[nodiscard]] const NoteWithContext *find(const QUuid &id) const;

Q_SIGNALS:
    void changed();
    /// Another place is shown, or all are again.
    void placeChanged();
    /// The notes have changed, or the day that their dates are relative to.
    void notesChanged();
    /// The rows are about to be replaced by those of the same filters, and have been.
    void rowsAboutToRefresh();
    void rowsRefreshed();
    /// The same of the latest ones.
    void latestAboutToRefresh();
    void latestRefreshed();

private:
    [[nodiscard]] static QString idOf(const NoteWithContext *entry);
    void storeChanged();
    void refresh();
    [[nodiscard]] bool fits(const NoteWithContext &entry) const;
    void startSearch(bool narrowed);
    bool searchSome(); ///< returns whether some are left
    void showFound();

    NotesStoring &store_;
    const Clock &clock_;
    BilingualText &texts_;
    QList<NoteWithContext> notes_;
    QDate today_;
    NoteRowsModel rows_;
    NoteRowsModel latest_;
    NoteSelection selection_{rows_};
    NoteRowsModel::Grouping grouping_ = NoteRowsModel::Grouping::ByDay;
    QString query_;
    NoteSearch search_;
    std::optional<ReadingContext> place_;
    QList<int> shown_; ///< the notes that fit, by index, newest first
    QList<NoteWithContext> searchedNotes_; ///< the list of which they are
    QList<int> candidates_; ///< of the search under way
    qsizetype searched_ = 0; ///< how many of them have been looked at
    QList<int> hits_; ///< so far
    WorkSlices slices_;
    QTimer refreshing_;
    bool isShown_ = false;
    bool isStale_ = true;
    bool isRefreshing_ = false; ///< the search under way has the same filters as the rows
};

} // namespace vellumo
