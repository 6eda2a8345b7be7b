// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/FocusSearch.h"

#include "platform/atspi/AtspiApplications.h"
#include "platform/atspi/AtspiQuestion.h"
#include "platform/atspi/FocusEvents.h"
#include <vector>

namespace vellumo {
namespace {

// A walk costs two calls for each object, so that more would exceed the deadline.
constexpr qsizetype maxObjectsWalked = 1500;

MatchRule focusedObjects()
{
    MatchRule rule;
    rule.states = {1 << static_cast<int>(Atspi::State::Focused), 0};
    return rule;
}

/// Absent if the application has no search; null if it found nothing.
std::optional<ObjectReference> askForFocused(const ObjectReference &frame, AtspiQuestion &question)
{
    constexpr quint32 canonicalOrder = 1;
    constexpr qint32 atMost = 1;
    constexpr bool recursive = true;
    const auto found =
        question
            .send(frame, Atspi::collection, "GetMatches",
                  {QVariant::fromValue(focusedObjects()), canonicalOrder, atMost, recursive})
            .value<QList<ObjectReference>>();
    if (!found) {
        return std::nullopt;
    }
    return found->isEmpty() ? ObjectReference() : found->constFirst();
}

bool isWorthEntering(const Atspi::StateSet &states)
{
    // Some toolkits implement only one of the two.
    return Atspi::hasState(states, Atspi::State::Showing)
        || Atspi::hasState(states, Atspi::State::Visible);
}

/// Walks level by level, so that the calls of a level are sent together.
ObjectReference walkToFocused(const ObjectReference &frame, AtspiQuestion &question)
{
    QList<ObjectReference> level{frame};
    qsizetype walked = 0;
    while (!level.isEmpty() && !question.isAborted() && walked < maxObjectsWalked) {
        std::vector<PendingAnswer> childAnswers;
        for (const ObjectReference &object : std::as_const(level)) {
            childAnswers.push_back(question.send(object, Atspi::accessible, "GetChildren"));
        }
        QList<ObjectReference> children;
        for (PendingAnswer &answer : childAnswers) {
            children += answer.value<QList<ObjectReference>>().value_or(QList<ObjectReference>());
        }
        std::vector<PendingAnswer> stateAnswers;
        for (const ObjectReference &child : std::as_const(children)) {
            stateAnswers.push_back(question.send(child, Atspi::accessible, "GetState"));
        }
        level.clear();
        for (qsizetype i = 0; i < children.size(); ++i) {
            const auto states = stateAnswers[static_cast<size_t>(i)].value<Atspi::StateSet>();
            if (states && Atspi::hasState(*states, Atspi::State::Focused)) {
                return children.at(i);
            }
            if (states && isWorthEntering(*states)) {
                level.append(children.at(i));
            }
        }
        walked += children.size();
    }
    return {};
}

} // namespace

FocusSearch::FocusSearch(AtspiApplications &applications, FocusEvents &events)
    : applications_(applications)
    , events_(events)
{
}

std::optional<FocusedObject> FocusSearch::find(qint64 processIdentifier, const QString &service,
                                               AtspiQuestion &question)
{
    auto focused = findFocused(processIdentifier, service, question);
    if (focused && Atspi::isMenuRole(focused->role)) {
        if (auto before = behindMenu(service, question)) {
            return before;
        }
    }
    return focused;
}

std::optional<FocusedObject> FocusSearch::behindMenu(const QString &service,
                                                     AtspiQuestion &question) const
{
    const ObjectReference before = events_.focusedBefore(service);
    if (before.isNull()) {
        return std::nullopt;
    }
    auto stateAnswer = question.send(before, Atspi::accessible, "GetState");
    auto roleAnswer = question.send(before, Atspi::accessible, "GetRole");
    const auto states = stateAnswer.value<Atspi::StateSet>();
    const auto role = roleAnswer.value<quint32>();
    if (!states || !role || !Atspi::hasState(*states, Atspi::State::Showing)
        || Atspi::isMenuRole(static_cast<Atspi::Role>(*role))) {
        return std::nullopt;
    }
    return FocusedObject{before, static_cast<Atspi::Role>(*role),
                         Atspi::hasState(*states, Atspi::State::Editable)};
}

std::optional<FocusedObject>
FocusSearch::findFocused(qint64 processIdentifier, const QString &service, AtspiQuestion &question)
{
    const ObjectReference remembered = events_.focusedIn(service);
    if (!remembered.isNull()) {
        if (auto focused = confirm(remembered, question)) {
            return focused;
        }
        events_.forget(service);
    }
    const auto frame = applications_.activeFrame(processIdentifier, service, question);
    if (!frame) {
        return std::nullopt;
    }
    const auto answer = askForFocused(*frame, question);
    const ObjectReference object = answer ? *answer : walkToFocused(*frame, question);
    if (object.isNull()) {
        return std::nullopt;
    }
    auto focused = confirm(object, question);
    if (focused) {
        events_.remember(object);
    }
    return focused;
}

std::optional<FocusedObject> FocusSearch::confirm(const ObjectReference &object,
                                                  AtspiQuestion &question)
{
    auto stateAnswer = question.send(object, Atspi::accessible, "GetState");
    auto roleAnswer = question.send(object, Atspi::accessible, "GetRole");
    const auto states = stateAnswer.value<Atspi::StateSet>();
    const auto role = roleAnswer.value<quint32>();
    if (!states || !role || !Atspi::hasState(*states, Atspi::State::Focused)) {
        return std::nullopt;
    }
    return FocusedObject{object, static_cast<Atspi::Role>(*role),
                         Atspi::hasState(*states, Atspi::State::Editable)};
}

} // namespace vellumo
