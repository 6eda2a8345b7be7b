// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelFade.h"

#include <utility>

namespace vellumo {

PanelFade::PanelFade(std::function<void(double)> apply)
{
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [apply = std::move(apply)](const QVariant &value) { apply(value.toDouble()); });
    connect(&animation_, &QVariantAnimation::finished, this, [this] {
        if (const auto done = std::exchange(completion_, nullptr)) {
            done();
        }
    });
}

void PanelFade::start(double from, double to, std::chrono::milliseconds duration,
                      std::function<void()> completion)
{
    stop();
    completion_ = std::move(completion);
    animation_.setStartValue(from);
    animation_.setEndValue(to);
    animation_.setDuration(static_cast<int>(duration.count()));
    animation_.start();
}

void PanelFade::stop()
{
    completion_ = nullptr;
    animation_.stop();
}

} // namespace vellumo
