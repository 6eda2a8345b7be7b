// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "Report.h"

#include <QStringList>
#include <algorithm>
#include <cstdio>

namespace vellumo::bench {

namespace {

QString number(double value)
{
    const int decimals = value < 1 ? 3 : value < 10 ? 2 : value < 100 ? 1 : 0;
    return QString::number(value, 'f', decimals);
}

void print(const QStringList &cells)
{
    std::puts(qPrintable(QStringLiteral("| ") + cells.join(QStringLiteral(" | "))
                         + QStringLiteral(" |")));
    std::fflush(stdout);
}

} // namespace

Runs runsFromArguments(const QStringList &arguments)
{
    return {arguments.contains(QStringLiteral("--quick"))};
}

void printRow(const QString &what, QList<double> values, const char *unit,
              std::optional<double> budget)
{
    if (values.isEmpty()) {
        printSkipped(what, QStringLiteral("no run succeeded"));
        return;
    }
    std::sort(values.begin(), values.end());
    const qsizetype middle = values.size() / 2;
    const double median = values.size() % 2 == 1 ? values.at(middle)
                                                 : (values.at(middle - 1) + values.at(middle)) / 2;
    const QString limit = budget ? number(*budget) + u' ' + QString::fromLatin1(unit) : QString();
    const QString verdict = !budget ? QString()
        : median <= *budget         ? QStringLiteral("kept")
                                    : QStringLiteral("MISSED");
    print({what, number(median) + u' ' + QString::fromLatin1(unit),
           number(values.first()) + u'-' + number(values.last()), QString::number(values.size()),
           limit, verdict});
}

void printSkipped(const QString &what, const QString &why)
{
    print({what, QStringLiteral("not measured"), why, QStringLiteral("0"), {}, {}});
}

double timed(const std::function<void()> &action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

} // namespace vellumo::bench
