// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "insights/ReadingLanguage.h"
#include <array>
#include <vector>

namespace vellumo {

/// Counts notes by what they are written in. A word or two without a recognizable language is taken
/// for what most of the others from the same place are in.
class LanguageCount {
public:
    using Counts = std::array<int, static_cast<size_t>(ReadingLanguage::Count)>;

    /// Places are numbered from 0 on.
    void add(ReadingLanguage language, size_t place);

    [[nodiscard]] Counts counts() const;

private:
    std::vector<Counts> places_;
};

} // namespace vellumo
