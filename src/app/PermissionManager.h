// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

namespace vellumo {

class Accessibility;
class Clock;

/// Watches whether the user lets this program read other applications, and reports each change
/// once.
class PermissionManager : public QObject {
    Q_OBJECT

public:
    /// Both must outlive this object.
    PermissionManager(Accessibility &accessibility, Clock &clock, bool isTrusted,
                      QObject *parent = nullptr);

    /// Called with the new state whenever it differs from the last one seen.
    std::function<void(bool isTrusted)> onChange;

    [[nodiscard]] bool isTrusted() const { return isTrusted_; }
    void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }

    /// Re-checks when the desktop says that something changed, regularly, and when one of our
    /// windows becomes active; until the process ends.
    void startMonitoring();

private:
    void recheck();

    Accessibility &accessibility_;
    Clock &clock_;
    bool isTrusted_;
    QTimer pollTimer_;
};

} // namespace vellumo
