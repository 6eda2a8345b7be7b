// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Desktop.h"
#include "driver/Waiting.h"
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <csignal>

namespace vellumo::test {

/// A program of the desktop, started without questions to a user, and ended with
/// everything that it started.
class Application {
public:
    struct Command {
        QString name; ///< as a skipped test names it
        QString program;
        QStringList arguments;
        QString windowClass;
        QString title = {}; ///< of the window to wait for
    };

    explicit Application(Command command);
    ~Application();
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;
    Application(Application &&) = delete;
    Application &operator=(Application &&) = delete;

    [[nodiscard]] bool isInstalled() const;

    /// Starts the program and waits for its window. Returns nothing if none came.
    std::optional<WindowId> start(const Desktop &desktop);
    /// Starts the program without waiting for anything.
    bool launch();

    [[nodiscard]] qint64 processIdentifier() const { return process_.processId(); }
    [[nodiscard]] bool isRunning() const { return process_.state() == QProcess::Running; }
    /// Returns whether the process is the program or was started by it.
    [[nodiscard]] bool owns(qint64 process) const
    {
        return process > 1 && tree().contains(process);
    }
    /// Returns what the program has written to its error output so far.
    [[nodiscard]] QString errorOutput();
    [[nodiscard]] QString standardOutput();

    /// Sends SIGSTOP to the program and all that it started. Likewise the next two.
    void stopAll() const { signalAll(SIGSTOP); }
    void continueAll() const { signalAll(SIGCONT); }
    void killAll() const { signalAll(SIGKILL); }
    void signal(int number) const;
    /// Ends the program with SIGTERM, then SIGKILL. Returns the exit code, or nothing after a
    /// crash.
    std::optional<int> end();
    bool waitForEnd(std::chrono::milliseconds time)
    {
        return waitUntil([this] { return !isRunning(); }, time);
    }
    [[nodiscard]] int exitCode() const { return process_.exitCode(); }
    [[nodiscard]] bool crashed() const { return process_.exitStatus() == QProcess::CrashExit; }

    void setEnvironment(const QString &name, const QString &value);

private:
    [[nodiscard]] QList<qint64> tree() const;
    void signalAll(int number) const;

    Command command_;
    QProcess process_;
    QString errorOutput_;
    QString standardOutput_;
};

/// Firefox with a fresh profile. Asks nothing and fetches nothing in the background.
Application::Command firefox(const QString &address, const QString &title, const QString &profile);
Application::Command mousepad(const QString &file);
Application::Command qtTextEdit(const QString &file);

/// Runs a program to its end, for at most this time, without blocking the event loop. Returns its
/// standard output.
QByteArray outputOf(const QString &program, const QStringList &arguments,
                    const QByteArray &input = {},
                    std::chrono::milliseconds time = std::chrono::seconds(2));

} // namespace vellumo::test
