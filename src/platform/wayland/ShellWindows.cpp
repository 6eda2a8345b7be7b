// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/ShellWindows.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace vellumo {

ShellWindows::ShellWindows(ShellCompanion &companion) : companion_(companion)
{
    connect(&companion_, &ShellCompanion::windowReported, this, &ShellWindows::take);
    connect(&companion_, &ShellCompanion::liveChanged, this, [this] {
        if (!companion_.isLive()) {
            front_ = {};
            Q_EMIT changed();
        }
    });
}

void ShellWindows::take(const ShellCompanion::Window &window)
{
    const QString id = QString::number(window.id);
    const QString &entry = window.application;
    const bool hasChanged = window.process > 0
        ? front_.set(id,
                     {.processIdentifier = window.process,
                      .applicationId = entry.endsWith(".desktop"_L1) ? entry.chopped(8) : QString(),
                      .applicationName = window.className,
                      .since = {}})
        : front_.setNone();
    if (front_.isLast(id)) {
        title_ = window.title;
    }
    if (hasChanged) {
        Q_EMIT changed();
    }
}

std::optional<FrontWindow> ShellWindows::frontWindow()
{
    QCoreApplication::sendPostedEvents(&companion_, QEvent::MetaCall); // reports that have arrived
    return front_.state();
}

std::optional<QString> ShellWindows::windowTitle(qint64 processIdentifier)
{
    const auto window = frontWindow();
    const bool isInFront =
        window && window->isActive && window->processIdentifier == processIdentifier;
    return isInFront ? std::optional(title_) : std::nullopt;
}

} // namespace vellumo
