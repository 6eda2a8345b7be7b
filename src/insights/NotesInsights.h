// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "insights/LanguageCount.h"
#include "insights/PlaceCount.h"
#include "platform/WorkSlices.h"
#include <QDate>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <optional>

namespace vellumo {

class BilingualText;
class NotesLibrary;

inline constexpr int daysOfAWeek = 7;

/// When, where and in which languages was read, over all notes. Follows the library while it is
/// shown; many notes are counted in slices, and the figures change after the last one.
class NotesInsights : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isReady READ isReady NOTIFY changed)
    Q_PROPERTY(int total READ total NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QList<int> days READ days NOTIFY changed)
    Q_PROPERTY(QStringList weekdayNames READ weekdayNames NOTIFY changed)
    Q_PROPERTY(QStringList monthsBegun READ monthsBegun NOTIFY changed)
    Q_PROPERTY(QList<int> months READ months NOTIFY changed)
    Q_PROPERTY(QStringList monthLabels READ monthLabels NOTIFY changed)
    Q_PROPERTY(QStringList languageNames READ languageNames NOTIFY changed)
    Q_PROPERTY(QList<int> languageCounts READ languageCounts NOTIFY changed)
    Q_PROPERTY(bool namesLetters READ namesLetters NOTIFY changed)
    Q_PROPERTY(QStringList shareTexts READ shareTexts NOTIFY changed)
    Q_PROPERTY(QStringList placeNames READ placeNames NOTIFY changed)
    Q_PROPERTY(QList<int> placeCounts READ placeCounts NOTIFY changed)
    Q_PROPERTY(QString placesNote READ placesNote NOTIFY changed)

public:
    /// What is handed over must outlive the insights.
    NotesInsights(NotesLibrary &library, BilingualText &texts, QObject *parent = nullptr);

    /// Nothing is counted while it is not shown.
    void setShown(bool shown);

    /// False until notes have been counted for the first time.
    [[nodiscard]] bool isReady() const { return isReady_; }
    [[nodiscard]] int total() const { return published_.total; }
    /// How many notes there are, on how many days.
    [[nodiscard]] QString summary() const;

    /// Notes per day of a year of whole weeks, by the user's first day of the week; the last week
    /// ends with today.
    [[nodiscard]] QList<int> days() const { return published_.days; }
    /// A day of these with its number of notes; empty for any other index. This and the other texts
    /// take everything that they depend on, so that bindings notice its changes.
    Q_INVOKABLE [[nodiscard]] QString dayText(int index, int count, bool english) const;
    /// "Mon" or "一", for each row of the calendar.
    [[nodiscard]] QStringList weekdayNames() const;
    /// For each week of the calendar the month that begins in it; empty without one.
    [[nodiscard]] QStringList monthsBegun() const;

    /// Notes per month of the last twelve, this month last.
    [[nodiscard]] QList<int> months() const { return published_.months; }
    /// "Nov" or "11月".
    [[nodiscard]] QStringList monthLabels() const;
    /// A month of these by its full name, with its number of notes.
    Q_INVOKABLE [[nodiscard]] QString monthText(int index, int count, bool english) const;

    /// Most read first, the rest together last.
    [[nodiscard]] QStringList languageNames() const;
    [[nodiscard]] QList<int> languageCounts() const;
    /// Rounded so that together they are 100.
    [[nodiscard]] QList<int> languagePercents() const;
    /// "38 %", for each language.
    [[nodiscard]] QStringList shareTexts() const;
    /// A language with its share and its number of notes, for screen readers.
    Q_INVOKABLE [[nodiscard]] static QString languageText(const QString &name, const QString &share,
                                                          int count, bool english);
    /// Whether one of them is named by its letters, since a word or two may fit several languages.
    [[nodiscard]] bool namesLetters() const;

    /// The places with most notes.
    [[nodiscard]] QStringList placeNames() const;
    [[nodiscard]] QList<int> placeCounts() const;
    /// A place with its number of notes, for screen readers.
    Q_INVOKABLE [[nodiscard]] static QString placeText(const QString &name, int count,
                                                       bool english);
    /// How many of all places these are; empty when they are all.
    [[nodiscard]] QString placesNote() const;

    /// One of the contexts of a place; the place is where all of that name belong together.
    [[nodiscard]] std::optional<ReadingContext> placeAt(int index) const;

Q_SIGNALS:
    void changed();

private:
    struct Figures {
        int total = 0;
        int activeDays = 0;
        QDate today;
        QDate firstDay; ///< of the calendar
        QList<int> days;
        QList<int> months;
        LanguageCount::Counts byLanguage{};
        QList<ReadingContext> places;
        QList<int> placeCounts;
        int allPlaces = 0;
    };
    struct LanguageShare {
        ReadingLanguage language;
        int count;
    };
    /// What one pass over the notes needs.
    struct Pass {
        QList<NoteWithContext> notes;
        qsizetype next = 0;
        Figures figures;
        PlaceCount places;
        LanguageCount languages;
        QList<double> dayBegins; ///< of the calendar, and of tomorrow
        QList<double> monthBegins; ///< of the twelve
        double dayBegin = 0; ///< of the day before the calendar that the notes have come to
    };

    void begin();
    bool countSome(); ///< returns whether some are left
    static void count(Pass &pass, const NoteWithContext &entry);
    void finish();
    [[nodiscard]] QList<LanguageShare> shares() const;

    NotesLibrary &library_;
    BilingualText &texts_;
    Figures published_;
    std::unique_ptr<Pass> pass_; ///< while notes are being counted
    WorkSlices slices_;
    bool isShown_ = false;
    bool isStale_ = true;
    bool isReady_ = false;
};

} // namespace vellumo
