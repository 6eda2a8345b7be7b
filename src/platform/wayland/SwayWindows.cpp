// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/SwayWindows.h"

#include "platform/wayland/SwayConnection.h"
#include <QJsonArray>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Returns the node with the keyboard; empty when there is none.
QJsonObject focusedNode(const QJsonObject &node)
{
    if (node["focused"_L1].toBool()) {
        return node;
    }
    for (const auto list : {"nodes"_L1, "floating_nodes"_L1}) {
        const QJsonArray children = node[list].toArray();
        for (const auto child : children) {
            if (QJsonObject found = focusedNode(child.toObject()); !found.isEmpty()) {
                return found;
            }
        }
    }
    return {};
}

QString idOf(const QJsonObject &container)
{
    return QString::number(container["id"_L1].toInteger());
}

} // namespace

SwayWindows::SwayWindows(SwayConnection &sway) : sway_(sway)
{
    connect(&sway_, &SwayConnection::opened, this, &SwayWindows::follow);
    connect(&sway_, &SwayConnection::eventArrived, this, &SwayWindows::handleEvent);
    connect(&sway_, &SwayConnection::closed, this, [this] {
        isKnown_ = false;
        Q_EMIT changed();
    });
}

void SwayWindows::follow()
{
    sway_.send(SwayMessage::Subscribe, R"(["window", "workspace"])");
    lookAtTree();
}

/// Finds the window in front where events do not name it.
void SwayWindows::lookAtTree()
{
    sway_.send(SwayMessage::GetTree, {}, [this](const QJsonDocument &tree) {
        if (tree.isObject()) {
            setFront(focusedNode(tree.object()));
        }
    });
}

void SwayWindows::handleEvent(quint32 type, const QJsonDocument &content)
{
    const QString change = content["change"_L1].toString();
    if (type == SwayMessage::WorkspaceEvent && change == "focus"_L1) {
        lookAtTree(); // an empty workspace is in front, or an event of its window follows
    } else if (type == SwayMessage::WindowEvent) {
        const QJsonObject container = content["container"_L1].toObject();
        if (change == "focus"_L1) {
            setFront(container);
        } else if (change == "title"_L1 && front_.isLast(idOf(container))) {
            title_ = container["name"_L1].toString();
        } else if (change == "close"_L1 || change == "move"_L1) {
            lookAtTree(); // no window may be left in front
        }
    }
}

/// Takes the container as the one with the keyboard. Only windows have a process.
void SwayWindows::setFront(const QJsonObject &container)
{
    const auto process = static_cast<qint64>(container["pid"_L1].toDouble());
    bool hasChanged = !std::exchange(isKnown_, true);
    if (process > 0) {
        const QString application = container["app_id"_L1].toString();
        const QString x11Class = container["window_properties"_L1]["class"_L1].toString();
        hasChanged |= front_.set(idOf(container),
                                 {.processIdentifier = process,
                                  .applicationId = application,
                                  .applicationName = application.isEmpty() ? x11Class : application,
                                  .since = {}});
    } else {
        hasChanged |= front_.setNone();
    }
    if (front_.isLast(idOf(container))) {
        title_ = container["name"_L1].toString();
    }
    if (hasChanged) {
        Q_EMIT changed();
    }
}

std::optional<FrontWindow> SwayWindows::frontWindow()
{
    sway_.readArrived();
    return isKnown_ ? front_.state() : std::nullopt;
}

std::optional<QString> SwayWindows::windowTitle(qint64 processIdentifier)
{
    const auto window = frontWindow();
    const bool isInFront =
        window && window->isActive && window->processIdentifier == processIdentifier;
    return isInFront ? std::optional(title_) : std::nullopt;
}

} // namespace vellumo
