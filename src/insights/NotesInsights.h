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

/// Statistics of all notes by day, month, language and place. Follows the library while shown.
/// Notes are counted in slices; the figures are published after the last one.
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
    Q_PROPERTY(QList<bool> determinedLanguages READ determinedLanguages NOTIFY changed)
    Q_PROPERTY(bool namesLetters READ namesLetters NOTIFY changed)
    Q_PROPERTY(QStringList shareTexts READ shareTexts NOTIFY changed)
    Q_PROPERTY(QStringList placeNames READ placeNames NOTIFY changed)
    Q_PROPERTY(QList<int> placeCounts READ placeCounts NOTIFY changed)
    Q_PROPERTY(QString placesNote READ placesNote NOTIFY changed)

public:
    /// All references must outlive the insights.
    NotesInsights(NotesLibrary &library, BilingualText &texts, QObject *parent = nullptr);

    /// Starts or stops following the library.
    void setShown(bool shown);

    /// Returns whether the notes have been counted at least once.
    [[nodiscard]] bool isReady() const { return isReady_; }
    [[nodiscard]] int total() const { return published_.total; }
    /// Returns a text with the number of notes and of days with notes.
    [[nodiscard]] QString summary() const;

    /// Returns the notes per day of the calendar: whole weeks of a year, beginning on the locale's
    /// first day of the week. The last week ends today.
    [[nodiscard]] QList<int> days() const { return published_.days; }
    /// Returns a day of the calendar with its number of notes; empty for any other index. This and
    /// the other invokable texts take all that they depend on, so that bindings notice changes.
    Q_INVOKABLE [[nodiscard]] QString dayText(int index, int count, bool english) const;
    /// Returns the label of each row of the calendar, such as "Mon" or "一".
    [[nodiscard]] QStringList weekdayNames() const;
    /// Returns the month that begins in each week of the calendar; empty for other weeks.
    [[nodiscard]] QStringList monthsBegun() const;

    /// Returns the notes of each of the last twelve months, this month last.
    [[nodiscard]] QList<int> months() const { return published_.months; }
    /// Returns labels such as "Nov" or "11月".
    [[nodiscard]] QStringList monthLabels() const;
    /// Returns the full name of a month with its number of notes.
    Q_INVOKABLE [[nodiscard]] QString monthText(int index, int count, bool english) const;

    /// Returns the languages by descending number of notes, then what is not known to be one
    /// language; the last one combines the rest.
    [[nodiscard]] QStringList languageNames() const;
    [[nodiscard]] QList<int> languageCounts() const;
    /// Returns for each whether it is one language.
    [[nodiscard]] QList<bool> determinedLanguages() const;
    /// Returns the shares, rounded so that they add up to 100.
    [[nodiscard]] QList<int> languagePercents() const;
    /// Returns the share of each language, such as "38 %".
    [[nodiscard]] QStringList shareTexts() const;
    /// Returns a language with its share and number of notes, for screen readers.
    Q_INVOKABLE [[nodiscard]] static QString languageText(const QString &name, const QString &share,
                                                          int count, bool english);
    /// Returns whether a script is listed, since its notes are too short to tell the language.
    [[nodiscard]] bool namesLetters() const;

    /// Returns the places with most notes.
    [[nodiscard]] QStringList placeNames() const;
    [[nodiscard]] QList<int> placeCounts() const;
    /// Returns a place with its number of notes, for screen readers.
    Q_INVOKABLE [[nodiscard]] static QString placeText(const QString &name, int count,
                                                       bool english);
    /// Returns a text with the number of listed and of all places; empty when all are listed.
    [[nodiscard]] QString placesNote() const;

    /// Returns one of the contexts that belong to a listed place.
    [[nodiscard]] std::optional<ReadingContext> placeAt(int index) const;
    /// Return a day of the calendar, and the first day of a listed month.
    [[nodiscard]] std::optional<QDate> dayAt(int index) const;
    [[nodiscard]] std::optional<QDate> monthAt(int index) const;

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
    /// The state of one pass over the notes.
    struct Pass {
        QList<NoteWithContext> notes;
        qsizetype next = 0;
        Figures figures;
        PlaceCount places;
        LanguageCount languages;
        QList<double> dayBegins; ///< for each day of the calendar, and tomorrow
        QList<double> monthBegins; ///< for each of the twelve months
        double dayBegin = 0; ///< of the current note's day, for days before the calendar
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
