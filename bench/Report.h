// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo::bench {

/// How often a bench repeats: often for figures, once to see that it still works.
struct Runs {
    bool quick = false;
    [[nodiscard]] int of(int count) const { return quick ? 1 : count; }
};

/// `--quick` among the program's arguments.
[[nodiscard]] Runs runsFromArguments(const QStringList &arguments);

/// Prints one row of the table: median, extremes, budget, and whether it is kept. Without values
/// the row says that it could not be measured.
void printRow(const QString &what, QList<double> values, const char *unit,
              std::optional<double> budget = {});

/// A row that could not be measured here, with the reason.
void printSkipped(const QString &what, const QString &why);

/// Milliseconds that the action takes.
[[nodiscard]] double timed(const std::function<void()> &action);

} // namespace vellumo::bench
