// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateControlling.h"
#include <QObject>

namespace vellumo {

class Clock;
class DefaultsStore;

/// Looks for new versions once a day, from a minute after the start, while the user agrees to it.
/// Without that, no timer runs and nothing is asked. Main thread only.
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
