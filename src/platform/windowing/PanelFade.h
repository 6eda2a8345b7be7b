// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantAnimation>
#include <chrono>
#include <functional>

namespace vellumo {

/// A change of opacity over time, one at a time.
class PanelFade : public QObject {
    Q_OBJECT

public:
    /// `apply` receives each opacity on the way and the last one.
    explicit PanelFade(std::function<void(double opacity)> apply);

    /// Ends the change under way where it is, without its completion. `completion` may be empty.
    void start(double from, double to, std::chrono::milliseconds duration,
               std::function<void()> completion);
    void stop();

private:
    QVariantAnimation animation_;
    std::function<void()> completion_;
};

} // namespace vellumo
