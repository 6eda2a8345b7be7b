// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;
class Clock;
class NotesLibrary;

/// Texts and figures of the home page: the notes of today, this month and two weeks, and the
/// places.
class NotesOverview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString greeting READ greeting NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(int thisMonth READ thisMonth NOTIFY changed)
    Q_PROPERTY(QString comparison READ comparison NOTIFY changed)
    Q_PROPERTY(QString monthText READ monthText NOTIFY changed)
    Q_PROPERTY(QStringList placeNames READ placeNames NOTIFY changed)
    Q_PROPERTY(QList<int> placeCounts READ placeCounts NOTIFY changed)
    Q_PROPERTY(QString placesText READ placesText NOTIFY changed)
    Q_PROPERTY(QList<int> days READ days NOTIFY changed)
    Q_PROPERTY(int maxPerDay READ maxPerDay NOTIFY changed)
    Q_PROPERTY(QString daysText READ daysText NOTIFY changed)

public:
    /// All references must outlive the overview.
    NotesOverview(NotesLibrary &library, const Clock &clock, BilingualText &texts,
                  QObject *parent = nullptr);

    /// Returns a greeting for the part of the day.
    [[nodiscard]] QString greeting() const;
    /// Returns a text with the number of notes today, and the place of more than half of them.
    [[nodiscard]] QString summary() const;
    [[nodiscard]] int thisMonth() const { return thisMonth_; }
    /// Returns a comparison of this month with the previous one.
    [[nodiscard]] QString comparison() const;
    /// Returns both in one line, for screen readers.
    [[nodiscard]] QString monthText() const;
    /// Return the places with most notes in the last 30 days, and their numbers of notes.
    [[nodiscard]] QStringList placeNames() const { return placeNames_; }
    [[nodiscard]] QList<int> placeCounts() const { return placeCounts_; }
    /// Returns both in one line, for screen readers.
    [[nodiscard]] QString placesText() const;
    /// Returns the notes per day of the last two weeks, today last.
    [[nodiscard]] QList<int> days() const { return days_; }
    /// Returns the largest of these, at least 1.
    [[nodiscard]] int maxPerDay() const;
    /// Returns the days in one line, for screen readers.
    [[nodiscard]] QString daysText() const;

    /// Recomputes everything from the library.
    void compute();
    /// Updates the part of the day.
    void followClock();

Q_SIGNALS:
    void changed();

private:
    enum class PartOfDay : quint8 { Morning, Afternoon, Evening };

    [[nodiscard]] PartOfDay partOfDayNow() const;

    NotesLibrary &library_;
    const Clock &clock_;
    BilingualText &texts_;
    PartOfDay partOfDay_ = PartOfDay::Evening;
    int today_ = 0;
    QString todayPlace_; ///< place of more than half of today's notes; empty without one
    bool isTodayPlaceAPage_ = false;
    int thisMonth_ = 0;
    int lastMonth_ = 0;
    QStringList placeNames_;
    QList<int> placeCounts_;
    QList<int> days_;
};

} // namespace vellumo
