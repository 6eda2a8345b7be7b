// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A value that follows `shown` between 0 and 1 like a critically damped spring: without overshoot,
/// and from its current state when reversed.
QtObject {
    id: fade

    required property bool shown

    readonly property real response: 0.3
    /// Seconds after which less than a thousandth of the way is left.
    readonly property real settled: 1.5 * fade.response

    property real value: 0
    property real start: 0
    property real elapsed: 0

    function rest(seconds: real): real {
        const way = 2 * Math.PI / fade.response * seconds
        return (1 + way) * Math.exp(-way)
    }

    onShownChanged: {
        fade.start = fade.value
        spring.stop()
        if (Units.animated)
            spring.start()
        else
            fade.value = fade.shown ? 1 : 0
    }
    onElapsedChanged: {
        const end = fade.shown ? 1 : 0
        fade.value = fade.elapsed >= fade.settled
            ? end : end + (fade.start - end) * fade.rest(fade.elapsed)
    }

    readonly property NumberAnimation spring: NumberAnimation {
        id: spring

        target: fade
        property: "elapsed"
        from: 0
        to: fade.settled
        duration: Math.round(1000 * fade.settled)
    }
}
