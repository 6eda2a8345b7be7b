// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The process's environment, and the part of it that no other program gets. Main thread only, and
/// what changes the environment only before there is another thread.
namespace vellumo::programEnvironment {

/// Takes these variables out of the environment, where their values are overwritten: neither a
/// program that is started from here, by whatever library, nor /proc/PID/environ has them then.
void takeOwn(const QStringList &names);
/// A variable that was taken, else the environment's; empty when it is not set.
[[nodiscard]] QString own(const QString &name);

/// Sets a variable for this process. Programs of startProgram() get what was set before.
void setHere(const char *name, const QByteArray &value);
/// Gives a variable back the value that it had before setHere(), if that was called.
void restore(const char *name);

/// Starts a program that outlives this one, with the environment that this one was started with,
/// but without its own variables: those that were taken and those that begin with VELLUMO_. False
/// when it could not be started.
[[nodiscard]] bool startProgram(const QString &program, const QStringList &arguments);

/// Keeps this process from leaving its memory in a core dump, whatever ends it. Programs of
/// startProgram() may still leave one.
void preventCoreDump();

} // namespace vellumo::programEnvironment
