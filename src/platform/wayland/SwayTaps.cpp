// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/SwayTaps.h"

#include "platform/wayland/SwayConnection.h"
#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto command = "nop vellumo-tap"_L1;

/// Tells other instances that the bindings, which they share, are removed.
constexpr auto unboundTick = "vellumo-tap unbound"_L1;

constexpr auto bindings = "bindsym --release --inhibited --no-warn Alt_L nop vellumo-tap; "
                          "bindsym --release --inhibited --no-warn Alt_R nop vellumo-tap";
constexpr auto removal = "unbindsym --release --inhibited Alt_L; "
                         "unbindsym --release --inhibited Alt_R";

constexpr auto unbindTime = 100ms;

bool isSuccess(const QJsonDocument &results)
{
    const QJsonArray list = results.array();
    return !list.isEmpty() && std::ranges::all_of(list, [](const auto &result) {
        return result["success"_L1].toBool();
    });
}

bool isForLoneAlt(const QJsonObject &binding)
{
    const QString key = binding["symbol"_L1].toString();
    return (key == "Alt_L"_L1 || key == "Alt_R"_L1)
        && binding["event_state_mask"_L1].toArray().isEmpty();
}

} // namespace

SwayTaps::SwayTaps(SwayConnection &sway) : sway_(sway)
{
    connect(&sway_, &SwayConnection::opened, this, &SwayTaps::follow);
    connect(&sway_, &SwayConnection::closed, this, [this] { setBound(false); });
    connect(&sway_, &SwayConnection::eventArrived, this, &SwayTaps::handleEvent);
}

SwayTaps::~SwayTaps()
{
    setListening(false);
    sway_.waitForReplies(QDeadlineTimer(unbindTime));
}

void SwayTaps::setListening(bool isListening)
{
    if (isListening == isListening_) {
        return;
    }
    isListening_ = isListening;
    if (isListening) {
        follow();
    } else {
        unbind();
    }
}

void SwayTaps::follow()
{
    if (isListening_) {
        sway_.send(SwayMessage::Subscribe, R"(["binding", "mode", "tick", "workspace"])");
        bind();
    }
}

void SwayTaps::bind()
{
    sway_.send(SwayMessage::RunCommand, bindings,
               [this](const QJsonDocument &results) { setBound(isSuccess(results)); });
}

void SwayTaps::unbind()
{
    setBound(false);
    sway_.send(SwayMessage::RunCommand, removal);
    sway_.send(SwayMessage::SendTick, QByteArray(unboundTick.data(), unboundTick.size()));
}

void SwayTaps::setBound(bool isBound)
{
    if (std::exchange(isBound_, isBound) != isBound) {
        Q_EMIT reachChanged();
    }
}

/// The events of bindings include those of the user, which report no tap.
void SwayTaps::handleEvent(quint32 type, const QJsonDocument &content)
{
    if (!isListening_) {
        return;
    }
    const auto change = [&content] { return content["change"_L1].toString(); };
    switch (type) {
    case SwayMessage::BindingEvent:
        if (content["binding"_L1]["command"_L1].toString() == command) {
            Q_EMIT tapped(std::chrono::steady_clock::now());
        } else if (isForLoneAlt(content["binding"_L1].toObject())) {
            setBound(false);
        }
        break;
    case SwayMessage::WorkspaceEvent: // sway has read its configuration again
        if (change() == "reload"_L1) {
            bind();
        }
        break;
    case SwayMessage::ModeEvent: // bindings are added to the mode that is current
        if (change() == "default"_L1) {
            bind();
        }
        break;
    case SwayMessage::TickEvent:
        if (content["payload"_L1].toString() == unboundTick) {
            bind();
        }
        break;
    default:
        break;
    }
}

} // namespace vellumo
