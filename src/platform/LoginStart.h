// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

/// Whether the program starts when the user logs in. Main thread only.
class LoginStart : public QObject {
    Q_OBJECT

public:
    enum class State : quint8 {
        Off,
        On,
        OnForAll, ///< set by the administrator for all users
        SwitchedOff, ///< set up but turned off, here or in the desktop's settings
        Broken, ///< set up, but the program is missing
    };

    using QObject::QObject;

    [[nodiscard]] virtual State state() const = 0;
    /// Returns false when it could not be changed.
    [[nodiscard]] virtual bool setOn(bool isOn) = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
