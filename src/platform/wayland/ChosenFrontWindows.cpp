// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/ChosenFrontWindows.h"

#include <utility>

namespace vellumo {

ChosenFrontWindows::ChosenFrontWindows(QList<FrontWindows *> sources)
    : sources_(std::move(sources))
    , chosen_(sources_.size() - 1)
{
    for (qsizetype i = 0; i < sources_.size(); ++i) {
        connect(sources_[i], &FrontWindows::changed, this, [this, i] { onChanged(i); });
    }
}

void ChosenFrontWindows::onChanged(qsizetype source)
{
    qsizetype chosen = 0;
    while (chosen < sources_.size() - 1 && !sources_[chosen]->frontWindow()) {
        ++chosen;
    }
    if (std::exchange(chosen_, chosen) != chosen || source == chosen) {
        Q_EMIT changed();
    }
}

std::optional<FrontWindow> ChosenFrontWindows::frontWindow()
{
    for (FrontWindows *source : sources_) {
        if (auto window = source->frontWindow()) {
            return window;
        }
    }
    return std::nullopt;
}

std::optional<QString> ChosenFrontWindows::windowTitle(qint64 processIdentifier)
{
    for (FrontWindows *source : sources_) {
        if (source->frontWindow()) {
            return source->windowTitle(processIdentifier);
        }
    }
    return std::nullopt;
}

} // namespace vellumo
