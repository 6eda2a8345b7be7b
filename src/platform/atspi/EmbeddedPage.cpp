// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/EmbeddedPage.h"

#include "platform/atspi/AtspiQuestion.h"
#include "platform/atspi/Processes.h"
#include <vector>

namespace vellumo {
namespace {

// Browser windows have about a hundred objects around the page.
constexpr qsizetype maxObjects = 500;
constexpr int maxDepthOfDocument = 4; ///< below the socket that embeds the page

bool isStartedBy(qint64 processIdentifier, const QString &service, AtspiQuestion &question)
{
    const auto process =
        question
            .send(Atspi::busDaemon(), Atspi::busInterface, "GetConnectionUnixProcessID", {service})
            .value<quint32>();
    return process && isAncestor(processIdentifier, *process);
}

/// Returns the first child in another process of one of these objects.
ObjectReference plugOf(const QList<ObjectReference> &objects, AtspiQuestion &question)
{
    std::vector<PendingAnswer> answers;
    for (const ObjectReference &object : objects) {
        answers.push_back(question.send(object, Atspi::accessible, "GetChildAtIndex", {0}));
    }
    for (qsizetype i = 0; i < objects.size(); ++i) {
        const auto plug = answers[static_cast<size_t>(i)].objectOfAnyService();
        if (plug && plug->service != objects.at(i).service) {
            return *plug;
        }
    }
    return {};
}

/// Searches visible objects only, so that pages of other tabs are not found.
ObjectReference plugIn(const ObjectReference &frame, AtspiQuestion &question)
{
    QList<ObjectReference> level{frame};
    qsizetype seen = 0;
    while (!level.isEmpty() && seen < maxObjects && !question.isAborted()) {
        std::vector<PendingAnswer> lists;
        for (const ObjectReference &object : std::as_const(level)) {
            lists.push_back(question.send(object, Atspi::accessible, "GetChildren"));
        }
        QList<ObjectReference> children;
        QList<ObjectReference> sockets; // or objects that have no children at all
        std::vector<PendingAnswer> states;
        for (qsizetype i = 0; i < level.size(); ++i) {
            const auto found = lists[static_cast<size_t>(i)].value<QList<ObjectReference>>();
            const auto own = found.value_or(QList<ObjectReference>()).mid(0, maxObjects - seen);
            if (own.isEmpty()) {
                sockets.append(level.at(i)); // from GTK 4.18 on, they have a state
            }
            for (const ObjectReference &child : own) {
                children.append(child);
                states.push_back(question.send(child, Atspi::accessible, "GetState"));
                ++seen;
            }
        }
        level.clear();
        for (qsizetype i = 0; i < children.size(); ++i) {
            const auto state = states[static_cast<size_t>(i)].value<Atspi::StateSet>();
            if (state == Atspi::StateSet{0, 0}) {
                sockets.append(children.at(i));
            } else if (state && Atspi::hasState(*state, Atspi::State::Showing)) {
                level.append(children.at(i));
            }
        }
        if (auto plug = plugOf(sockets, question); !plug.isNull()) {
            return plug;
        }
    }
    return {};
}

} // namespace

ObjectReference embeddedPage(const ObjectReference &frame, qint64 processIdentifier,
                             AtspiQuestion &question)
{
    ObjectReference object = plugIn(frame, question);
    QString trusted;
    for (int depth = 0; depth < maxDepthOfDocument && !object.isNull(); ++depth) {
        // The page's process owns two bus names.
        if (object.service != trusted
            && !isStartedBy(processIdentifier, object.service, question)) {
            break;
        }
        trusted = object.service;
        const auto role = question.send(object, Atspi::accessible, "GetRole").value<quint32>();
        if (role && static_cast<Atspi::Role>(*role) == Atspi::Role::DocumentWeb) {
            return object;
        }
        object = question.send(object, Atspi::accessible, "GetChildAtIndex", {0})
                     .objectOfAnyService()
                     .value_or(ObjectReference());
    }
    return {};
}

} // namespace vellumo
