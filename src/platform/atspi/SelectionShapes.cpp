// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/SelectionShapes.h"

#include "platform/atspi/AtspiQuestion.h"
#include "platform/atspi/PagedSelection.h"
#include "platform/atspi/ParagraphFlow.h"
#include "platform/atspi/TextRanges.h"
#include <optional>

namespace vellumo {
namespace {

using Kind = SelectedText::Kind;

PendingAnswer sendGetToolkit(const QString &service, AtspiQuestion &question)
{
    return question.sendGetProperty(Atspi::rootOf(service), Atspi::application, "ToolkitName");
}

OffsetQuality qualityFrom(PendingAnswer &toolkitAnswer)
{
    return toolkitAnswer.property<QString>() == u"Chromium" ? OffsetQuality::WrongAfterAstral
                                                            : OffsetQuality::Exact;
}

SelectedText textOf(const ObjectReference &object, const SelectedRanges &selected,
                    OffsetQuality offsets, AtspiQuestion &question)
{
    if (!selected.isComplete) {
        return {Kind::Unfinished, {}};
    }
    if (selected.ranges.isEmpty()) {
        return {Kind::Nothing, {}};
    }
    const auto text = embeddedText(object, selected.ranges, offsets, question);
    // A selection may be a single image, which has no text.
    return text && !text->isEmpty() ? SelectedText{Kind::Text, *text}
                                    : SelectedText{Kind::Unfinished, {}};
}

/// Browsers update a selection object by object, some time after the user. A text composed from two
/// states was never selected and must be discarded.
SelectedText settledTextOf(const ObjectReference &object, SelectedRanges selected,
                           OffsetQuality offsets, AtspiQuestion &question)
{
    constexpr int maxAttempts = 4;
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        SelectedText text = textOf(object, selected, offsets, question);
        if (text.kind == Kind::Nothing || question.isAborted()) {
            return text;
        }
        auto now = PendingRanges(object, question).take();
        if (!now || *now == selected) {
            return text;
        }
        selected = std::move(*now);
    }
    return {Kind::Unfinished, {}};
}

/// Returns the document that contains the object; null outside of one.
ObjectReference documentAround(const ObjectReference &object, AtspiQuestion &question)
{
    constexpr int maxNesting = 48;
    ObjectReference ancestor = object;
    for (int depth = 0; depth < maxNesting; ++depth) {
        ancestor = question.sendGetProperty(ancestor, Atspi::accessible, "Parent")
                       .property<ObjectReference>()
                       .value_or(ObjectReference());
        if (ancestor.isNull()) {
            return {};
        }
        const auto role = question.send(ancestor, Atspi::accessible, "GetRole").value<quint32>();
        switch (static_cast<Atspi::Role>(role.value_or(0))) {
        case Atspi::Role::Invalid:
        case Atspi::Role::Application:
        case Atspi::Role::Frame:
        case Atspi::Role::ScrollPane:
        case Atspi::Role::Viewport:
            return {}; // a text outside of any page
        case Atspi::Role::DocumentFrame:
        case Atspi::Role::DocumentWeb:
            return ancestor;
        default:
            break;
        }
    }
    return {};
}

/// Within a page the focus may move, for instance to a link, while the selection stays.
SelectedText readDocumentAround(const ObjectReference &object, OffsetQuality offsets,
                                AtspiQuestion &question)
{
    const ObjectReference document = documentAround(object, question);
    if (!document.isNull()) {
        if (const auto selected = PendingRanges(document, question).take()) {
            return settledTextOf(document, *selected, offsets, question);
        }
    }
    return {};
}

} // namespace

SelectedText readSelection(const ObjectReference &object, AtspiQuestion &question)
{
    auto roleAnswer = question.send(object, Atspi::accessible, "GetRole");
    auto toolkitAnswer = sendGetToolkit(object.service, question);
    auto pendingRanges = PendingRanges(object, question);
    const auto role = static_cast<Atspi::Role>(roleAnswer.value<quint32>().value_or(0));
    const auto offsets = qualityFrom(toolkitAnswer);
    const auto selected = pendingRanges.take();
    if (role == Atspi::Role::Invalid || role == Atspi::Role::PasswordText) {
        return {};
    }
    if (!selected) {
        return Atspi::isDocumentRole(role) ? readPages(object, question)
                                           : readDocumentAround(object, offsets, question);
    }
    if (role == Atspi::Role::Paragraph) {
        if (const auto flowing = readParagraphFlow(object, *selected, question)) {
            return *flowing;
        }
    }
    if (role == Atspi::Role::Terminal && selected->ranges.isEmpty() && selected->hasEmpty) {
        // VTE with GTK 4 places what it has selected after its text when lines have scrolled away.
        return {Kind::Unfinished, {}};
    }
    SelectedText own = settledTextOf(object, *selected, offsets, question);
    if (own.kind == Kind::Nothing && !Atspi::isDocumentRole(role)) {
        SelectedText around = readDocumentAround(object, offsets, question);
        const bool isNews = around.kind == Kind::Text || around.kind == Kind::Unfinished;
        return isNews || question.isAborted() ? around : own;
    }
    return own;
}

OffsetQuality offsetQualityOf(const QString &service, AtspiQuestion &question)
{
    auto toolkitAnswer = sendGetToolkit(service, question);
    return qualityFrom(toolkitAnswer);
}

} // namespace vellumo
