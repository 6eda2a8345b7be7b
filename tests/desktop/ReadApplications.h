// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"

namespace vellumo::test {

/// Applications that only tests start. The browsers have a fresh profile, ask nothing
/// and fetch nothing in the background.
Application::Command chromium(const QString &address, const QString &title, const QString &profile,
                              bool exposesTree);
Application::Command epiphany(const QString &address, const QString &title);
Application::Command gnomeTextEditor(const QString &file);
Application::Command evince(const QString &file);
Application::Command writer(const QString &file, const QString &profile);
/// A terminal that runs `script` with bash.
Application::Command xterm(const QString &script);

/// A PDF with one page of real text, line by line.
QByteArray pdf(const QStringList &lines);

} // namespace vellumo::test
