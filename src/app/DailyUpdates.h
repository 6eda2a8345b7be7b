// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateControlling.h"
#include <QObject>

namespace vellumo {

class Clock;
class DefaultsStore;

/// Checks for new versions once a day, starting one minute after the launch, while the user has
/// enabled it. Otherwise no timer runs and nothing is requested. Main thread only.
class DailyUpdates : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    DailyUpdates(UpdateControlling &controller, DefaultsStore &defaults, Clock &clock,
                 QObject *parent = nullptr);

private:
    void follow();
    void look();
    [[nodiscard]] bool isAgreed() const;

    UpdateControlling &controller_;
    DefaultsStore &defaults_;
    Clock &clock_;
    bool isWaiting_ = false; ///< a timer runs
};

} // namespace vellumo
