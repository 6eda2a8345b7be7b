// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QAbstractListModel>
#include <QDate>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace vellumo {

/// List model of headings, each followed by its notes. Short plain texts are composed when the view
/// requests them; a row itself is two numbers.
class NoteRowsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")

public:
    enum class Grouping : quint8 { None, ByDay, ByPlace };
    Q_ENUM(Grouping)
    enum class Order : quint8 { NewestFirst, OldestFirst, MostFollowUps };
    Q_ENUM(Order)

    struct Arrangement {
        Grouping grouping = Grouping::None;
        /// By follow-ups there are no days: the order is one of the whole list, or of each place.
        Order order = Order::NewestFirst;

        bool operator==(const Arrangement &) const = default;
    };

    enum Role {
        IsHeading = Qt::UserRole,
        Title,
        Detail,
        When,
        Origin, ///< the number of follow-ups, if any, and the place
        Spoken, ///< everything but the title, for screen readers
        FollowUps, ///< the number of notes for a heading
        IsSelected,
        IsFolded, ///< a heading whose notes have no rows
    };

    struct TextContext {
        bool isEnglish;
        QDate today;
    };

    /// `textContext` returns the language and the day. It is called for each text.
    explicit NoteRowsModel(std::function<TextContext()> textContext, QObject *parent = nullptr);

    /// Replaces the rows. `shown` holds the indices of the notes to show, the newest first.
    void setNotes(const QList<NoteWithContext> &notes, const QList<int> &shown,
                  Arrangement arrangement);
    /// Folds the group that a row belongs to, or unfolds it; other rows stay. A group stays folded
    /// when the notes are replaced. Does nothing without groups.
    void setFolded(int row, bool folded);
    void unfoldAll() { folded_.clear(); } ///< from the next setNotes() on
    [[nodiscard]] bool isFolded(int row) const;
    /// Returns the row of the heading above a row; -1 without groups.
    [[nodiscard]] int headingOf(int row) const;

    /// Notifies the views that the language or the day has changed.
    void refreshTexts();

    /// Sets the predicate that returns whether a note is selected. Without it none is.
    void setSelected(std::function<bool(const QUuid &id)> selected);
    /// Notifies the views that results of the predicate have changed.
    void refreshSelection();

    /// Returns the note of a row; null for a heading and beyond the end.
    [[nodiscard]] const NoteWithContext *noteAt(int row) const;

    /// Returns the row of a note; -1 without one.
    [[nodiscard]] int rowOf(const QUuid &id) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        int note; ///< -1 for a heading
        int group;
    };
    struct Group {
        QString key;
        QList<int> members;
        QDate day;
    };

    [[nodiscard]] QList<int> sorted(QList<int> newestFirst, Order order) const;
    void arrangeByDay(const QList<int> &shown);
    void arrangeByPlace(const QList<int> &shown);
    void addGroup(const QString &key, const QList<int> &members, QDate day);
    [[nodiscard]] int groupOf(int row) const;
    [[nodiscard]] QVariant headingData(const Group &group, int role) const;
    [[nodiscard]] QVariant noteData(const NoteWithContext &entry, int role) const;
    [[nodiscard]] QString detail(const ReadingNote &note) const;
    [[nodiscard]] QString time(const ReadingNote &note) const;
    [[nodiscard]] QString place(const ReadingContext &context) const;
    [[nodiscard]] QString origin(const NoteWithContext &entry) const;
    [[nodiscard]] QString spoken(const NoteWithContext &entry) const;

    std::function<TextContext()> textContext_;
    std::function<bool(const QUuid &id)> selected_;
    QList<NoteWithContext> notes_;
    Grouping grouping_ = Grouping::None;
    std::vector<Row> rows_;
    std::vector<Group> groups_;
    QSet<QString> folded_; ///< keys of groups
};

} // namespace vellumo
