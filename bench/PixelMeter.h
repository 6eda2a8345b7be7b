// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace vellumo::bench {

/// Measures from outside how long a window takes to show something, by the pixels that a person
/// would see. The server tells when the screen changes; nothing is polled.
class PixelMeter {
public:
    PixelMeter();
    ~PixelMeter();
    PixelMeter(const PixelMeter &) = delete;
    PixelMeter &operator=(const PixelMeter &) = delete;
    PixelMeter(PixelMeter &&) = delete;
    PixelMeter &operator=(PixelMeter &&) = delete;

    /// Milliseconds after the trigger. A change is dated when the look that finds it begins.
    struct Sighting {
        double mapped = 0; ///< the window
        double content = 0; ///< differs from the screen before, and is not of one flat colour
    };

    /// Pulls the trigger and watches for a window whose WM_CLASS contains `part`, that was not
    /// visible before, and is at least 100 pixels wide.
    [[nodiscard]] std::optional<Sighting>
    watch(const QString &part, const std::function<void()> &trigger,
          std::chrono::milliseconds time = std::chrono::seconds(5));

    /// Waits until the screen has not changed for `quiet`; false when it never rests. A caret that
    /// blinks counts.
    bool waitForRest(std::chrono::milliseconds quiet, std::chrono::milliseconds time);

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

} // namespace vellumo::bench
