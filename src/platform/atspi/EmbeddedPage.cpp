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
    const ObjectReference bus{QStringLiteral("org.freedesktop.DBus"),
                              QStringLiteral("/org/freedesktop/DBus")};
    const auto process =
        question.send(bus, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {service})
            .value<quint32>();
    return process && isAncestor(processIdentifier, *process);
}

/// Before GTK 4.18, a socket has no state and lists no children, but its first child is in another
/// process. Later versions list it.
ObjectReference pluggedInto(const ObjectReference &socket, AtspiQuestion &question)
{
    const auto plug =
        question.send(socket, Atspi::accessible, "GetChildAtIndex", {0}).objectOfAnyService();
    return plug && plug->service != socket.service ? *plug : ObjectReference();
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
        std::vector<PendingAnswer> states;
        for (PendingAnswer &list : lists) {
            const auto found = list.value<QList<ObjectReference>>();
            for (const ObjectReference &child :
                 found.value_or(QList<ObjectReference>()).mid(0, maxObjects - seen)) {
                if (child.service != frame.service) {
                    return child;
                }
                children.append(child);
                states.push_back(question.send(child, Atspi::accessible, "GetState"));
                ++seen;
            }
        }
        level.clear();
        for (qsizetype i = 0; i < children.size(); ++i) {
            const auto state = states[static_cast<size_t>(i)].value<Atspi::StateSet>();
            if (state == Atspi::StateSet{0, 0}) {
                if (auto plug = pluggedInto(children.at(i), question); !plug.isNull()) {
                    return plug;
                }
            } else if (state && Atspi::hasState(*state, Atspi::State::Showing)) {
                level.append(children.at(i));
            }
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
