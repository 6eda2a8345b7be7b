// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/PagedSelection.h"

#include "platform/atspi/EmbeddedText.h"
#include "platform/atspi/TextRanges.h"
#include <algorithm>
#include <vector>

namespace vellumo {
namespace {

using Kind = SelectedText::Kind;

// A book has thousands of pages; the selection is near the visible one.
constexpr qsizetype pagesEachSide = 12;

} // namespace

SelectedText readPages(const ObjectReference &document, AtspiQuestion &question)
{
    auto childrenAnswer = question.send(document, Atspi::accessible, "GetChildren");
    auto currentAnswer = question.sendGetProperty(document, Atspi::document, "CurrentPageNumber");
    const auto pages = childrenAnswer.value<QList<ObjectReference>>();
    const qsizetype current = currentAnswer.property<int>().value_or(1) - 1; // counted from 1
    if (!pages || pages->isEmpty()) {
        return {};
    }
    const qsizetype last = pages->size() - 1;
    const qsizetype from = std::clamp<qsizetype>(current - pagesEachSide, 0, last);
    const qsizetype to = std::clamp<qsizetype>(current + pagesEachSide, 0, last);
    std::vector<PendingRanges> answers;
    for (qsizetype i = from; i <= to; ++i) {
        answers.emplace_back(pages->at(i), question);
    }
    QStringList texts;
    bool isCertain = true;
    bool isSelected = false;
    for (qsizetype i = from; i <= to; ++i) {
        const auto selected = answers[static_cast<size_t>(i - from)].take();
        if (!selected || !selected->isComplete) {
            isCertain = false;
            break;
        }
        if (selected->ranges.isEmpty()) {
            continue;
        }
        isSelected = true;
        const auto text =
            embeddedText(pages->at(i), selected->ranges, OffsetQuality::Exact, question);
        const bool mayGoOn = (i == from && from > 0) || (i == to && to < last);
        isCertain = isCertain && text && !mayGoOn;
        texts.append(text.value_or(QString()));
    }
    const QString text = texts.join(u'\n');
    if (!isCertain || question.isAborted()) {
        return {isSelected ? Kind::Unfinished : Kind::Unknown, {}};
    }
    if (!text.isEmpty()) {
        return {Kind::Text, text};
    }
    const bool sawAll = from == 0 && to == last;
    return {sawAll && texts.isEmpty() ? Kind::Nothing : Kind::Unknown, {}};
}

} // namespace vellumo
