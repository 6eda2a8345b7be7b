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

/// Measures how long a window takes to show something, by the pixels on the screen. The server
/// reports changes of the screen; nothing is polled.
class PixelMeter {
public:
    PixelMeter();
    ~PixelMeter();
    PixelMeter(const PixelMeter &) = delete;
    PixelMeter &operator=(const PixelMeter &) = delete;
    PixelMeter(PixelMeter &&) = delete;
    PixelMeter &operator=(PixelMeter &&) = delete;

    /// Milliseconds after the trigger. A change has the time at which the capture that shows it
    /// began.
    struct Sighting {
        double mapped = 0; ///< the window is mapped
        /// Its area differs from the previous screen and has more than one colour.
        double content = 0;
    };

    /// Calls the trigger and waits for a window whose WM_CLASS contains `part`, that was not
    /// visible before, and that is at least 100 pixels wide.
    [[nodiscard]] std::optional<Sighting>
    watch(const QString &part, const std::function<void()> &trigger,
          std::chrono::milliseconds time = std::chrono::seconds(5));

    /// Waits until the screen has not changed for `quiet`. Returns false when it keeps changing; a
    /// blinking caret counts as a change.
    bool waitForRest(std::chrono::milliseconds quiet, std::chrono::milliseconds time);

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

} // namespace vellumo::bench
