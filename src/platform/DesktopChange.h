// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace vellumo {

/// A change to the desktop's settings by which vellumo is reached from more windows. It is made and
/// undone only at the user's request. Main thread only.
class DesktopChange : public QObject {
    Q_OBJECT

public:
    enum class State : quint8 {
        Unknown, ///< not read yet
        Unavailable, ///< this desktop has no such setting
        AfterLogin, ///< possible once the user has logged in again
        Possible,
        Taken, ///< the setting has another use and is left alone
        Made,
    };

    using QObject::QObject;

    [[nodiscard]] virtual State state() const = 0;

    /// Returns the keys of a shortcut that was made, such as "Super+Ctrl+E"; otherwise empty.
    [[nodiscard]] virtual QString keys() const { return {}; }

    /// Reads the setting again. Returns at once; changed() follows if it differs.
    virtual void refresh() = 0;

    /// Make and undo the change. Return at once; finished() follows, once for each call, unless
    /// this object is destroyed before.
    virtual void make() = 0;
    virtual void undo() = 0;

Q_SIGNALS:
    void changed();

    /// Emitted after make() or undo(). False: the setting could not be written and is as before.
    void finished(bool hasSucceeded);
};

} // namespace vellumo
