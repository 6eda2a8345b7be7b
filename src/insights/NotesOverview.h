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

/// The texts and figures of the home page: how many notes, when and where.
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
    /// What is handed over must outlive the overview.
    NotesOverview(NotesLibrary &library, const Clock &clock, BilingualText &texts,
                  QObject *parent = nullptr);

    /// By the part of the day.
    [[nodiscard]] QString greeting() const;
    /// How many notes today, and where more than half of them were read.
    [[nodiscard]] QString summary() const;
    [[nodiscard]] int thisMonth() const { return thisMonth_; }
    /// This month beside the one before.
    [[nodiscard]] QString comparison() const;
    /// Both in one line, for screen readers.
    [[nodiscard]] QString monthText() const;
    /// The places with most notes in the last 30 days, and how many each.
    [[nodiscard]] QStringList placeNames() const { return placeNames_; }
    [[nodiscard]] QList<int> placeCounts() const { return placeCounts_; }
    /// Both in one line, for screen readers.
    [[nodiscard]] QString placesText() const;
    /// Notes per day of the last two weeks, today last.
    [[nodiscard]] QList<int> days() const { return days_; }
    /// The largest of these, at least 1.
    [[nodiscard]] int maxPerDay() const;
    /// In one line, for screen readers.
    [[nodiscard]] QString daysText() const;

    void compute();
    /// The part of the day may be another when someone looks again.
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
    QString todayPlace_; ///< empty without one of most notes, and when it has no name
    int thisMonth_ = 0;
    int lastMonth_ = 0;
    QStringList placeNames_;
    QList<int> placeCounts_;
    QList<int> days_;
};

} // namespace vellumo
