// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "insights/ReadingLanguage.h"
#include <array>
#include <vector>

namespace vellumo {

/// Counts notes by language. A note whose letters fit several languages counts for the most common
/// language of its place that has these letters.
class LanguageCount {
public:
    using Counts = std::array<int, static_cast<size_t>(ReadingLanguage::Count)>;

    /// `place` is a number from 0.
    void add(ReadingLanguage language, size_t place);

    [[nodiscard]] Counts counts() const;

private:
    std::vector<Counts> places_;
};

} // namespace vellumo
