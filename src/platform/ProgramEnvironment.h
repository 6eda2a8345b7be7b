// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The process's environment, and the part of it that is hidden from other programs. Main thread
/// only; functions that change the environment must run before there is another thread.
namespace vellumo::programEnvironment {

/// Removes these variables from the environment and overwrites their values there, so that neither
/// child processes, whichever library starts them, nor /proc/PID/environ have them.
void takeOwn(const QStringList &names);
/// Returns a variable that was taken, else that of the environment; empty when it is not set.
[[nodiscard]] QString own(const QString &name);

/// Sets a variable for this process. Programs of startProgram() get the previous value.
void setHere(const char *name, const QByteArray &value);
/// Restores the value that a variable had before setHere(). Does nothing if that was not called.
void restore(const char *name);

/// Starts a program that outlives this one, with the environment that this one was started with,
/// less the variables that were taken and those that begin with VELLUMO_. Returns false when it
/// could not be started.
[[nodiscard]] bool startProgram(const QString &program, const QStringList &arguments);

/// Prevents core dumps with this process's memory. Programs of startProgram() keep the original
/// limit.
void preventCoreDump();

} // namespace vellumo::programEnvironment
