// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class QObject;

namespace vellumo::desktopTool {

/// Returns the path of the first of these programs that is installed; empty without one.
[[nodiscard]] QString find(const QStringList &programs);

/// Runs a program of the desktop and collects what it prints, with a deadline of 5 seconds.
/// `completion` runs once from the event loop, and never after `context` is destroyed; absent when
/// the program could not be started, failed, or did not end in time.
void run(const QString &program, const QStringList &arguments, QObject *context,
         std::function<void(const std::optional<QByteArray> &output)> completion);

} // namespace vellumo::desktopTool
