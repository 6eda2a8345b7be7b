// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo::bench {

/// Number of repetitions: many for figures, one to test that the bench works.
struct Runs {
    bool quick = false;
    [[nodiscard]] int of(int count) const { return quick ? 1 : count; }
};

/// Returns whether `--quick` is among the program's arguments.
[[nodiscard]] Runs runsFromArguments(const QStringList &arguments);

/// Prints one row of the table: median, extremes, budget, and whether it is met. Without values the
/// row reads "not measured".
void printRow(const QString &what, QList<double> values, const char *unit,
              std::optional<double> budget = {});

/// Prints a row that could not be measured here, with the reason.
void printSkipped(const QString &what, const QString &why);

/// Returns the duration of the action in milliseconds.
[[nodiscard]] double timed(const std::function<void()> &action);

} // namespace vellumo::bench
