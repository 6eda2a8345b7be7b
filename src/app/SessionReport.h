// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>

namespace vellumo {

class Clock;
class DefaultsStore;
class DesktopReporting;
class ForwardingExplainer;
class LinuxPlatform;
class ServiceSetup;

/// Reports in English, for a bug report, what works in this session and what limits it. Contains
/// neither contents nor addresses.
class SessionReport : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        LinuxPlatform &platform;
        DesktopReporting &desktop;
        const ServiceSetup &service;
        const ForwardingExplainer &explainer;
        DefaultsStore &defaults;
        Clock &clock;
        bool isRunning = true; ///< false in a process that only writes the report
    };
    /// `canWork` is false when a selection cannot be explained at all.
    using Completion = std::function<void(const QString &text, bool canWork)>;

    explicit SessionReport(const Collaborators &with) : with_(with) { }

    /// Completes once, from the event loop, when the desktop has answered, after 2 s at the latest,
    /// and not if this object is destroyed before.
    void write(Completion completion);

private:
    [[nodiscard]] bool isAnswered() const;
    void finish();

    Collaborators with_;
    Completion completion_; ///< absent once it was called
};

} // namespace vellumo
