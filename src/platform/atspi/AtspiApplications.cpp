// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiApplications.h"

#include "platform/atspi/AtspiQuestion.h"
#include "platform/atspi/Processes.h"
#include <algorithm>
#include <vector>

namespace vellumo {
namespace {

constexpr qsizetype maxFrames = 256; ///< maximum number of windows of one application

} // namespace

AtspiApplications::AtspiApplications(std::function<std::optional<QString>(qint64)> windowTitle)
    : windowTitle_(std::move(windowTitle))
{
}

std::optional<QString> AtspiApplications::serviceOf(qint64 processIdentifier,
                                                    AtspiQuestion &question)
{
    if (processIdentifier <= 0) {
        return std::nullopt;
    }
    QStringList services = processes_.keys(processIdentifier);
    if (services.isEmpty()) {
        lookUp(question);
        services = processes_.keys(processIdentifier);
    }
    if (services.size() == 1) {
        return services.constFirst();
    }
    const bool isOwn = !services.isEmpty();
    if (!isOwn) {
        services = sandboxedServices();
    }
    const QString title = titleInFront(processIdentifier);
    if (services.isEmpty() || (!isOwn && title.isEmpty())) {
        return std::nullopt;
    }
    // A hung application must not use up the time of the others.
    services.removeIf([&](const QString &service) { return question.isSilent(service); });
    const auto frames = framesOf(services, title, question);
    if (question.hasLostService()) {
        for (qsizetype i = 0; i < services.size(); ++i) {
            if (frames.at(i).isEmpty()) {
                forget(services.at(i));
            }
        }
    }
    std::optional<QString> best;
    int bestRank = isOwn ? -1 : 2; // in a sandbox a matching title alone is not enough
    for (qsizetype i = 0; i < services.size(); ++i) {
        int rank = 0;
        for (const Frame &frame : frames.at(i)) {
            rank = std::max(rank, (frame.isActive ? 1 : 0) + (frame.isTitled ? 2 : 0));
        }
        if (rank > bestRank) {
            best = services.at(i);
            bestRank = rank;
        }
    }
    return best;
}

/// Returns the services that are connected through a sandbox's proxy, whose process is not the
/// application's.
QStringList AtspiApplications::sandboxedServices() const
{
    QStringList services;
    for (auto each = processes_.cbegin(); each != processes_.cend(); ++each) {
        if (processName(each.value()) == "xdg-dbus-proxy") {
            services.append(each.key());
        }
    }
    return services;
}

QString AtspiApplications::titleInFront(qint64 processIdentifier) const
{
    return windowTitle_ ? windowTitle_(processIdentifier).value_or(QString()) : QString();
}

void AtspiApplications::lookUp(AtspiQuestion &question)
{
    const auto registered =
        question.send(Atspi::rootOf(Atspi::registryService()), Atspi::accessible, "GetChildren")
            .value<QList<ObjectReference>>();
    if (!registered) {
        return;
    }
    QHash<QString, qint64> processes;
    std::vector<std::pair<QString, PendingAnswer>> lookUps;
    for (const ObjectReference &application : *registered) {
        const auto known = processes_.constFind(application.service);
        if (known != processes_.constEnd()) {
            processes.insert(known.key(), known.value());
        } else {
            lookUps.emplace_back(application.service,
                                 question.send(Atspi::busDaemon(), Atspi::busInterface,
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

/// Returns the windows of each service. All calls of a round are sent before the first reply is
/// awaited.
QList<QList<AtspiApplications::Frame>> AtspiApplications::framesOf(const QStringList &services,
                                                                   const QString &title,
                                                                   AtspiQuestion &question)
{
    std::vector<PendingAnswer> lists;
    for (const QString &service : services) {
        lists.push_back(question.send(Atspi::rootOf(service), Atspi::accessible, "GetChildren"));
    }
    QList<QList<Frame>> frames;
    std::vector<std::pair<PendingAnswer, PendingAnswer>> answers;
    for (PendingAnswer &list : lists) {
        QList<Frame> ofService;
        const auto objects = list.value<QList<ObjectReference>>();
        for (const ObjectReference &object :
             objects.value_or(QList<ObjectReference>()).mid(0, maxFrames)) {
            ofService.append({object});
            answers.emplace_back(question.send(object, Atspi::accessible, "GetState"),
                                 question.sendGetProperty(object, Atspi::accessible, "Name"));
        }
        frames.append(ofService);
    }
    auto answer = answers.begin();
    for (QList<Frame> &ofService : frames) {
        for (Frame &frame : ofService) {
            auto &[state, name] = *answer++;
            frame.isActive = Atspi::hasState(
                state.value<Atspi::StateSet>().value_or(Atspi::StateSet()), Atspi::State::Active);
            frame.isTitled = !title.isEmpty() && name.property<QString>() == title;
        }
    }
    return frames;
}

std::optional<ObjectReference> AtspiApplications::activeFrame(qint64 processIdentifier,
                                                              const QString &service,
                                                              AtspiQuestion &question) const
{
    const QList<Frame> frames =
        framesOf({service}, titleInFront(processIdentifier), question).constFirst();
    const auto active = std::ranges::count_if(frames, &Frame::isActive);
    // Some applications mark their window as active with a delay.
    const auto front = std::ranges::find_if(frames, [active](const Frame &frame) {
        return active == 1 ? frame.isActive : frame.isTitled && (active == 0 || frame.isActive);
    });
    if (front != frames.end()) {
        return front->object;
    }
    if (active > 0) {
        return std::ranges::find_if(frames, &Frame::isActive)->object;
    }
    return frames.size() == 1 ? std::optional(frames.constFirst().object) : std::nullopt;
}

} // namespace vellumo
