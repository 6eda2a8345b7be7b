// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/BusName.h"
#include <QVersionNumber>
#include <optional>

namespace vellumo {

/// The version of the KWin that runs, as its service on the session bus reports it. Main thread
/// only.
class KWinVersion : public QObject {
    Q_OBJECT

public:
    explicit KWinVersion(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Returns a null version where there is no KWin; absent while that is not known.
    [[nodiscard]] std::optional<QVersionNumber> number() const { return number_; }

Q_SIGNALS:
    /// Also emitted for the first answer, and when KWin has restarted.
    void changed();

private:
    void ask();
    void set(const QVersionNumber &number);

    QDBusConnection bus_;
    BusName kwin_;
    std::optional<QVersionNumber> number_;
};

} // namespace vellumo
