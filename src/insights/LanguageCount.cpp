// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/LanguageCount.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace vellumo {

namespace {

using Language = ReadingLanguage;
using Counts = LanguageCount::Counts;

int &of(Counts &counts, Language language)
{
    return counts[static_cast<size_t>(language)];
}

/// Moves the notes of a script to the most common language with these letters, if there is one.
void settle(Counts &counts, Language letters, std::initializer_list<Language> candidates)
{
    const Language largest =
        *std::max_element(candidates.begin(), candidates.end(), [&counts](Language a, Language b) {
            return of(counts, a) < of(counts, b);
        });
    if (of(counts, largest) > 0) {
        of(counts, largest) += std::exchange(of(counts, letters), 0);
    }
}

} // namespace

void LanguageCount::add(ReadingLanguage language, size_t place)
{
    if (place >= places_.size()) {
        places_.resize(place + 1);
    }
    ++of(places_[place], language);
}

LanguageCount::Counts LanguageCount::counts() const
{
    Counts sum{};
    for (Counts place : places_) {
        settle(place, Language::LatinLetters,
               {Language::English, Language::French, Language::German, Language::Spanish,
                Language::Italian, Language::Portuguese, Language::Dutch});
        settle(place, Language::ChineseCharacters, {Language::Chinese, Language::Japanese});
        for (size_t i = 0; i < sum.size(); ++i) {
            sum[i] += place[i];
        }
    }
    return sum;
}

} // namespace vellumo
