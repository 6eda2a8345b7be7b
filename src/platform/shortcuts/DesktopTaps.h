// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include "platform/dbus/BusName.h"
#include <QDBusContext>

namespace vellumo {

/// Taps of Alt that KWin reports by a call on the session bus, at the release of the key. Its name
/// there is not that of the program: a call of that one would start the program. Calls of other
/// senders are refused.
class DesktopTaps final : public TapSource {
    Q_OBJECT

public:
    explicit DesktopTaps(const QDBusConnection &bus);
    ~DesktopTaps() override;
    Q_DISABLE_COPY_MOVE(DesktopTaps)

    /// Takes calls while it is on.
    void setOn(bool isOn);

    // What is to be called.
    [[nodiscard]] static QString service();
    [[nodiscard]] static QString path();
    [[nodiscard]] static QString interface();
    [[nodiscard]] static QString method();

private:
    class Receiver;

    QDBusConnection bus_;
    BusName kwin_;
    std::unique_ptr<Receiver> receiver_; ///< null while off
};

} // namespace vellumo
