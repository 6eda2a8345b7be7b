// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// The cost of classifying a selection of five megabytes as word, sentence or paragraph.
#include "Report.h"
#include "explain/ExplanationTypes.h"
#include <QCoreApplication>

using namespace vellumo;
using namespace vellumo::bench;
using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Runs runs = runsFromArguments(QCoreApplication::arguments());
    constexpr qsizetype size = 5'000'000;
    const struct {
        const char *name;
        QString text;
    } rows[] = {
        {"letters", QString(size, u'x')},
        {"family emoji", u"👩‍👩‍👧‍👦"_s.repeated(size / 25)},
        {"one letter with marks", u'e' + QString(size, QChar(0x301))},
        {"blanks", QString(size, u' ')},
    };
    for (const auto &row : rows) {
        QList<double> times;
        for (int run = 0; run < runs.of(21); ++run) {
            const ExplanationRequest request{row.text, u"English"_s};
            times.append(timed([&] { static_cast<void>(request.kind()); }));
        }
        printRow(u"kind of 5 MB, %1"_s.arg(QLatin1StringView(row.name)), times, "ms");
    }
    return 0;
}
