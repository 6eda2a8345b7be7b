// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "library/NoteRowsModel.h"
#include "library/NoteSearch.h"
#include "library/NoteSelection.h"
#include "notes/NotesStoring.h"
#include "platform/WorkSlices.h"
#include <QColor>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace vellumo {

class BilingualText;
class Clock;

/// The notes of the store, searched and grouped for the main window. Follows the store while the
/// window is shown. A long search runs in slices, so that typing is never blocked.
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
    Q_PROPERTY(bool isNarrowed READ isNarrowed NOTIFY changed)
    Q_PROPERTY(QString narrowingText READ narrowingText NOTIFY changed)
    Q_PROPERTY(QString widenText READ widenText NOTIFY changed)
    Q_PROPERTY(bool isFiltered READ isFiltered NOTIFY changed)
    Q_PROPERTY(
        vellumo::NoteRowsModel::Grouping grouping READ grouping WRITE setGrouping NOTIFY changed)
    Q_PROPERTY(vellumo::NoteRowsModel::Order order READ order WRITE setOrder NOTIFY changed)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY changed)

public:
    /// A list of notes and the indices of some of them, newest first.
    struct Excerpt {
        QList<NoteWithContext> notes;
        QList<int> chosen;
    };

    /// All references must outlive the library.
    NotesLibrary(NotesStoring &store, const Clock &clock, BilingualText &texts,
                 QObject *parent = nullptr);

    /// Starts or stops following the store.
    void setShown(bool shown);

    /// Returns all notes, newest first.
    [[nodiscard]] const QList<NoteWithContext> &notes() const { return notes_; }
    [[nodiscard]] QDate today() const { return today_; }

    [[nodiscard]] QAbstractItemModel *rows() { return &rows_; }
    [[nodiscard]] NoteSelection *selection() { return &selection_; }
    [[nodiscard]] Excerpt allNotes() const;
    /// Returns the notes that match query and restriction; during a search, the previous result.
    [[nodiscard]] Excerpt foundNotes() const { return {searchedNotes_, shown_}; }
    [[nodiscard]] Excerpt selectedNotes() const;
    /// Returns the rows of the newest notes, ungrouped.
    [[nodiscard]] QAbstractItemModel *latest() { return &latest_; }
    [[nodiscard]] int total() const { return static_cast<int>(notes_.size()); }
    /// Returns the number of notes that match query and restriction.
    [[nodiscard]] int found() const { return static_cast<int>(shown_.size()); }
    /// Returns whether a finished search or filter has results.
    [[nodiscard]] bool hasFound() const;
    /// Returns a text with the number of selected, of found or of all notes.
    [[nodiscard]] QString countText() const;
    [[nodiscard]] bool isSearching() const { return slices_.isActive(); }

    [[nodiscard]] QString query() const { return query_; }
    void setQuery(const QString &query);
    /// Returns the text as markup for Text.StyledText, with the words of the query in this colour.
    Q_INVOKABLE [[nodiscard]] QString marked(const QString &text, const QColor &color) const;

    /// Local days, both included.
    struct Days {
        QDate first;
        QDate last;

        bool operator==(const Days &) const = default;
    };

    /// Restrict the list to the place of this context, or to these days, in place of an earlier
    /// restriction.
    void narrowTo(const ReadingContext &place) { narrow({place, std::nullopt}); }
    void narrowTo(Days days) { narrow({std::nullopt, days}); }
    /// Removes the restriction.
    Q_INVOKABLE void widen() { narrow({}); }
    [[nodiscard]] bool isNarrowed() const { return narrowing_ != Narrowing(); }
    /// Returns the label of the restriction; empty without one.
    [[nodiscard]] QString narrowingText() const;
    /// Returns the label with the effect of widen(), for screen readers.
    [[nodiscard]] QString widenText() const;
    /// Returns whether there is a query or a restriction.
    [[nodiscard]] bool isFiltered() const { return isNarrowed() || !search_.isEmpty(); }

    [[nodiscard]] NoteRowsModel::Grouping grouping() const { return arrangement_.grouping; }
    void setGrouping(NoteRowsModel::Grouping grouping) { arrange({grouping, order()}); }
    [[nodiscard]] NoteRowsModel::Order order() const { return arrangement_.order; }
    void setOrder(NoteRowsModel::Order order) { arrange({grouping(), order}); }

    /// Folds or unfolds the group of a row. A search, and another restriction, unfold all groups.
    Q_INVOKABLE void setFolded(int row, bool folded) { rows_.setFolded(row, folded); }
    Q_INVOKABLE [[nodiscard]] bool isFolded(int row) const { return rows_.isFolded(row); }
    Q_INVOKABLE [[nodiscard]] int headingOf(int row) const { return rows_.headingOf(row); }

    Q_INVOKABLE [[nodiscard]] bool isHeading(int row) const { return noteAt(row) == nullptr; }
    [[nodiscard]] const NoteWithContext *noteAt(int row) const { return rows_.noteAt(row); }
    [[nodiscard]] const NoteWithContext *latestAt(int row) const { return latest_.noteAt(row); }
    /// Convert between a row and the id of its note, which stays the same through a refresh. The id
    /// is empty and the row -1 without a note.
    Q_INVOKABLE [[nodiscard]] QString idAt(int row) const { return idOf(noteAt(row)); }
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &id) const;
    Q_INVOKABLE [[nodiscard]] QString latestIdAt(int row) const { return idOf(latestAt(row)); }
    Q_INVOKABLE [[nodiscard]] int latestRowOf(const QString &id) const;
    [[nodiscard]] const NoteWithContext *find(const QUuid &id) const;

Q_SIGNALS:
    void changed();
    /// Emitted when the restriction to a place or to days has changed.
    void narrowingChanged();
    /// Emitted when the notes have changed, or the day that their dates are relative to.
    void notesChanged();
    /// Emitted before and after the rows are replaced by those of the same query and restriction.
    void rowsAboutToRefresh();
    void rowsRefreshed();
    /// The same for latest().
    void latestAboutToRefresh();
    void latestRefreshed();

private:
    struct Narrowing {
        std::optional<ReadingContext> place;
        std::optional<Days> days;

        bool operator==(const Narrowing &) const = default;
    };

    void narrow(const Narrowing &narrowing);
    [[nodiscard]] static QString idOf(const NoteWithContext *entry);
    void storeChanged();
    void refresh();
    [[nodiscard]] bool matches(const NoteWithContext &entry) const;
    void arrange(NoteRowsModel::Arrangement arrangement);
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
    NoteRowsModel::Arrangement arrangement_{.grouping = NoteRowsModel::Grouping::ByDay};
    QString query_;
    NoteSearch search_;
    Narrowing narrowing_;
    double begin_ = 0; ///< of the days of the restriction, as a note's time
    double end_ = 0;
    QList<int> shown_; ///< indices of the matching notes, newest first
    QList<NoteWithContext> searchedNotes_; ///< the list that shown_ refers to
    QList<int> candidates_; ///< of the search in progress
    qsizetype searched_ = 0; ///< number of candidates searched so far
    QList<int> hits_; ///< found so far
    WorkSlices slices_;
    QTimer refreshing_;
    bool isShown_ = false;
    bool isStale_ = true;
    bool isRefreshing_ = false; ///< the search in progress changes neither query nor restriction
};

} // namespace vellumo
