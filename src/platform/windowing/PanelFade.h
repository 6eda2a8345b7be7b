// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantAnimation>
#include <chrono>
#include <functional>

namespace vellumo {

/// Animates an opacity, one change at a time.
class PanelFade : public QObject {
    Q_OBJECT

public:
    /// `apply` receives each intermediate opacity and the final one.
    explicit PanelFade(std::function<void(double opacity)> apply);

    /// Starts a change. A running one stops at its current value, without its completion.
    /// `completion` may be empty.
    void start(double from, double to, std::chrono::milliseconds duration,
               std::function<void()> completion);
    void stop();

private:
    QVariantAnimation animation_;
    std::function<void()> completion_;
};

} // namespace vellumo
