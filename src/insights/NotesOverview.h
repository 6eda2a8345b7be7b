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

/// The figures of the home page: how many notes, when and where.
class NotesOverview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(PartOfDay partOfDay READ partOfDay NOTIFY changed)
    Q_PROPERTY(int today READ today NOTIFY changed)
    Q_PROPERTY(QString todayPlace READ todayPlace NOTIFY changed)
    Q_PROPERTY(int thisMonth READ thisMonth NOTIFY changed)
    Q_PROPERTY(int lastMonth READ lastMonth NOTIFY changed)
    Q_PROPERTY(QString lastMonthName READ lastMonthName NOTIFY changed)
    Q_PROPERTY(QStringList placeNames READ placeNames NOTIFY changed)
    Q_PROPERTY(QList<int> placeCounts READ placeCounts NOTIFY changed)
    Q_PROPERTY(QList<int> days READ days NOTIFY changed)

public:
    enum class PartOfDay : quint8 { Morning, Afternoon, Evening };
    Q_ENUM(PartOfDay)

    /// What is handed over must outlive the overview.
    NotesOverview(NotesLibrary &library, const Clock &clock, BilingualText &texts,
                  QObject *parent = nullptr);

    [[nodiscard]] PartOfDay partOfDay() const { return partOfDay_; }
    [[nodiscard]] int today() const { return today_; }
    /// Where more than half of today's notes were read; empty without such a place, and when it
    /// has no name.
    [[nodiscard]] QString todayPlace() const { return todayPlace_; }
    [[nodiscard]] int thisMonth() const { return thisMonth_; }
    [[nodiscard]] int lastMonth() const { return lastMonth_; }
    [[nodiscard]] QString lastMonthName() const;
    /// The places with most notes in the last 30 days, and how many each.
    [[nodiscard]] QStringList placeNames() const { return placeNames_; }
    [[nodiscard]] QList<int> placeCounts() const { return placeCounts_; }
    /// Notes per day of the last two weeks, today last.
    [[nodiscard]] QList<int> days() const { return days_; }

    void compute();
    /// The part of the day may be another when someone looks again.
    void followClock();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] PartOfDay partOfDayNow() const;

    NotesLibrary &library_;
    const Clock &clock_;
    BilingualText &texts_;
    PartOfDay partOfDay_ = PartOfDay::Evening;
    int today_ = 0;
    QString todayPlace_;
    int thisMonth_ = 0;
    int lastMonth_ = 0;
    QStringList placeNames_;
    QList<int> placeCounts_;
    QList<int> days_;
};

} // namespace vellumo
