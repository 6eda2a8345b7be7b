// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <functional>
#include <optional>

namespace vellumo {

/// The program's interfaces on the session bus: org.freedesktop.Application, by which desktops
/// start and address it, and app.vellumo.Report1, by which its own command line asks for a report.
/// Callers are not trusted: arguments are bounded, and invalid ones are answered with an error that
/// does not repeat them.
class ApplicationInterface : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    static constexpr qsizetype maxUrls = 16; ///< per call
    static constexpr qsizetype maxUrlLength = 65'536;

    explicit ApplicationInterface(QObject *parent = nullptr);

    /// Actions by name, to be set before offerOn(). They run from the event loop, after the caller
    /// has its reply.
    QHash<QString, std::function<void()>> actions;

    using ReportCompletion = std::function<void(const QString &text, bool canWork)>;
    /// Writes the report of this session for app.vellumo.Report1, to be set before offerOn(). The
    /// completion may be called later, and after this object was destroyed.
    std::function<void(const ReportCompletion &)> writeReport;

    /// Registers the interfaces on this open bus and requests the program's name. Never blocks.
    void offerOn(QDBusConnection bus);

    /// Gives the name back, since the program is about to end. Calls that still arrive fail with
    /// ServiceUnknown, so that their sender starts the program anew instead of losing its request.
    void stop();

    // Called by the bus, and by the program's own start.
    void activate();
    void open(const QStringList &urls);
    void activateAction(const QString &name, bool hasParameter);
    void report(); ///< only by the bus

Q_SIGNALS:
    // The first two are emitted from the event loop, after the caller has its reply.
    void activationRequested();
    void openRequested(const QStringList &urls);
    /// Emitted when the name belongs to another process.
    void nameTaken();

private:
    void schedule(std::function<void()> work);
    void refuse(const QString &why) const;
    /// Replies with an error if a caller on the bus comes after stop().
    [[nodiscard]] bool refusesAll() const;

    std::optional<QDBusConnection> bus_; ///< since offerOn()
    bool isStopped_ = false;
};

} // namespace vellumo
