// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

namespace vellumo {

class Accessibility;
class Clock;
class Workspace;

/// Watches whether the user lets this program read other applications, and reports each change
/// once.
class PermissionManager : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    PermissionManager(Accessibility &accessibility, Workspace &workspace, Clock &clock,
                      bool isTrusted, QObject *parent = nullptr);

    /// Called with the new state whenever it differs from the last one seen.
    std::function<void(bool isTrusted)> onChange;

    [[nodiscard]] bool isTrusted() const { return isTrusted_; }
    void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }

    /// Re-checks when the desktop reports a change, regularly, and when one of our
    /// windows becomes active; until the process ends.
    void startMonitoring();

    /// Opens the desktop's settings on accessibility; where there are none, our own question.
    void openAccessibilitySettings();

private:
    void recheck();

    Accessibility &accessibility_;
    Workspace &workspace_;
    Clock &clock_;
    bool isTrusted_;
    QTimer pollTimer_;
};

} // namespace vellumo
