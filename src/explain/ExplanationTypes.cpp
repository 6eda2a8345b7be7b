// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationTypes.h"

#include "explain/GraphemeCount.h"

namespace vellumo {

namespace {
constexpr int maxSentenceLength = 180; // characters as the user perceives them
}

SelectedTextKind ExplanationRequest::kind() const
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (hasMoreGraphemesThan(trimmed, maxSentenceLength) || trimmed.contains(u'\n')) {
        return SelectedTextKind::paragraph;
    }
    // Full-width question and exclamation marks do not count as the end of a sentence.
    for (const char16_t mark : {u'.', u'?', u'!', u'。'}) {
        if (trimmed.contains(mark)) {
            return SelectedTextKind::sentence;
        }
    }
    return SelectedTextKind::word;
}

} // namespace vellumo
