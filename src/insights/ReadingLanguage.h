// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// The language of a text, detected by its letters and its most common words; or only the script
/// when several languages share the letters and no common word occurs.
enum class ReadingLanguage : quint8 {
    Chinese,
    ChineseCharacters, ///< a few, which may also be Japanese
    Japanese,
    Korean,
    English,
    French,
    German,
    Spanish,
    Italian,
    Portuguese,
    Dutch,
    LatinLetters,
    CyrillicLetters,
    ArabicLetters,
    Greek,
    HebrewLetters,
    DevanagariLetters,
    Thai,
    OtherLetters,
    NoLetters,
    Count
};

/// Detects the language from the beginning of a text, in bounded time.
[[nodiscard]] ReadingLanguage readingLanguage(QStringView text);

/// Returns whether it is a language, as opposed to a script of several or the rest.
[[nodiscard]] bool isDetermined(ReadingLanguage language);

[[nodiscard]] QString nameOf(ReadingLanguage language, bool english);

} // namespace vellumo
