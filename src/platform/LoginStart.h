// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

/// Whether the program starts when the user logs in.
class LoginStart : public QObject {
    Q_OBJECT

public:
    enum class State : quint8 {
        off,
        on,
        onForAll, ///< the computer's owner has set it for every user
        switchedOff, ///< set up, but turned off, here or in the desktop's settings
        broken, ///< set up, but what it would start is not there
    };

    using QObject::QObject;

    [[nodiscard]] virtual State state() const = 0;
    /// False when it could not be changed.
    [[nodiscard]] virtual bool setOn(bool isOn) = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
