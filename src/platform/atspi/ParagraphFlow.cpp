// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/ParagraphFlow.h"

#include "platform/atspi/EmbeddedText.h"
#include "platform/atspi/RelatedObject.h"
#include <algorithm>

namespace vellumo {
namespace {

using Kind = SelectedText::Kind;

// Empty paragraphs report no selection; a selection may span a few of them.
constexpr int maxEmptyParagraphs = 8;

struct Flow {
    QStringList texts; ///< in the order of the walk
    bool hasNeighbours = false;
    bool isCertain = true;
};

Flow walk(const ObjectReference &start, quint32 direction, AtspiQuestion &question)
{
    Flow flow;
    int emptyInARow = 0;
    ObjectReference paragraph = relatedObject(start, direction, question);
    flow.hasNeighbours = !paragraph.isNull();
    while (!paragraph.isNull() && emptyInARow < maxEmptyParagraphs) {
        auto pendingRanges = PendingRanges(paragraph, question);
        auto countAnswer = question.sendGetProperty(paragraph, Atspi::text, "CharacterCount");
        const auto selected = pendingRanges.take();
        const bool isEmpty = countAnswer.property<int>() == 0;
        if (!selected || (selected->ranges.isEmpty() && !isEmpty)) {
            break;
        }
        const auto text = embeddedText(paragraph, selected->ranges, OffsetQuality::Exact, question);
        flow.isCertain = flow.isCertain && selected->isComplete && text;
        flow.texts.append(text.value_or(QString()));
        emptyInARow = isEmpty ? emptyInARow + 1 : 0;
        paragraph = relatedObject(paragraph, direction, question);
    }
    while (!flow.texts.isEmpty() && flow.texts.constLast().isEmpty()) {
        flow.texts.removeLast();
    }
    return flow;
}

} // namespace

std::optional<SelectedText> readParagraphFlow(const ObjectReference &paragraph,
                                              const SelectedRanges &selected,
                                              AtspiQuestion &question)
{
    const auto own = embeddedText(paragraph, selected.ranges, OffsetQuality::Exact, question);
    Flow before = walk(paragraph, Atspi::relationFlowsFrom, question);
    const Flow after = walk(paragraph, Atspi::relationFlowsTo, question);
    if (!before.hasNeighbours && !after.hasNeighbours) {
        return std::nullopt;
    }
    if (!own || !selected.isComplete || !before.isCertain || !after.isCertain
        || question.isAborted()) {
        const bool isSelected =
            !selected.ranges.isEmpty() || !before.texts.isEmpty() || !after.texts.isEmpty();
        return SelectedText{isSelected ? Kind::Unfinished : Kind::Unknown, {}};
    }
    std::reverse(before.texts.begin(), before.texts.end());
    QStringList texts = before.texts;
    if (!own->isEmpty() || (!before.texts.isEmpty() && !after.texts.isEmpty())) {
        texts.append(*own);
    }
    texts += after.texts;
    if (texts.isEmpty()) {
        return SelectedText{Kind::Nothing, {}};
    }
    return SelectedText{Kind::Text, texts.join(u'\n')};
}

} // namespace vellumo
