// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// The language of a text, judged by its letters and its most common words. Letters that
/// several languages share are named by themselves unless the words say more.
enum class ReadingLanguage : quint8 {
    Chinese,
    ChineseCharacters, ///< a few of them, which may as well be Japanese
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

/// Looks at the beginning only, however long the text is.
[[nodiscard]] ReadingLanguage readingLanguage(QStringView text);

[[nodiscard]] QString nameOf(ReadingLanguage language, bool english);

} // namespace vellumo
