// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiApplications.h"

#include "platform/atspi/AtspiQuestion.h"
#include <vector>

namespace vellumo {

AtspiApplications::AtspiApplications(std::function<std::optional<QString>(qint64)> windowTitle)
    : windowTitle_(std::move(windowTitle))
{
}

std::optional<QString> AtspiApplications::serviceOf(qint64 processIdentifier,
                                                    AtspiQuestion &question)
{
    auto service = rememberedService(processIdentifier);
    if (!service) {
        lookUp(question);
        service = rememberedService(processIdentifier);
    }
    return service;
}

std::optional<QString> AtspiApplications::rememberedService(qint64 processIdentifier) const
{
    const auto key = processes_.key(processIdentifier);
    return key.isEmpty() ? std::nullopt : std::optional(key);
}

void AtspiApplications::lookUp(AtspiQuestion &question)
{
    const auto registered =
        question.send(Atspi::rootOf(Atspi::registryService()), Atspi::accessible, "GetChildren")
            .value<QList<ObjectReference>>();
    if (!registered) {
        return;
    }
    const ObjectReference bus{QStringLiteral("org.freedesktop.DBus"),
                              QStringLiteral("/org/freedesktop/DBus")};
    QHash<QString, qint64> processes;
    std::vector<std::pair<QString, PendingAnswer>> lookUps;
    for (const ObjectReference &application : *registered) {
        const auto known = processes_.constFind(application.service);
        if (known != processes_.constEnd()) {
            processes.insert(known.key(), known.value());
        } else {
            lookUps.emplace_back(application.service,
                                 question.send(bus, "org.freedesktop.DBus",
                                               "GetConnectionUnixProcessID",
                                               {application.service}));
        }
    }
    for (auto &[service, answer] : lookUps) {
        if (const auto process = answer.value<quint32>()) {
            processes.insert(service, *process);
        }
    }
    processes_ = processes;
}

std::optional<ObjectReference> AtspiApplications::activeFrame(qint64 processIdentifier,
                                                              const QString &service,
                                                              AtspiQuestion &question) const
{
    const auto frames = question.send(Atspi::rootOf(service), Atspi::accessible, "GetChildren")
                            .value<QList<ObjectReference>>();
    if (!frames) {
        return std::nullopt;
    }
    std::vector<std::pair<PendingAnswer, PendingAnswer>> answers;
    for (const ObjectReference &frame : *frames) {
        answers.emplace_back(question.send(frame, Atspi::accessible, "GetState"),
                             question.sendGetProperty(frame, Atspi::accessible, "Name"));
    }
    QList<ObjectReference> active;
    QList<ObjectReference> titled;
    const QString title =
        windowTitle_ ? windowTitle_(processIdentifier).value_or(QString()) : QString();
    for (qsizetype i = 0; i < frames->size(); ++i) {
        auto &[state, name] = answers[static_cast<size_t>(i)];
        if (Atspi::hasState(state.value<Atspi::StateSet>().value_or(Atspi::StateSet()),
                            Atspi::State::Active)) {
            active.append(frames->at(i));
        }
        if (!title.isEmpty() && name.property<QString>() == title) {
            titled.append(frames->at(i));
        }
    }
    // Not every application marks its window as active at once.
    if (active.size() == 1) {
        return active.constFirst();
    }
    for (const ObjectReference &frame : titled) {
        if (active.isEmpty() || active.contains(frame)) {
            return frame;
        }
    }
    if (!active.isEmpty()) {
        return active.constFirst();
    }
    return frames->size() == 1 ? std::optional(frames->constFirst()) : std::nullopt;
}

} // namespace vellumo
