// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// The dashboard's search in few and many notes: from a keystroke to the matching rows. Needs no
// display.
#include "Report.h"
#include "StoreWriter.h"
#include "library/NotesLibrary.h"
#include "notes/NotesStore.h"
#include "platform/qt/SystemClock.h"
#include "ui/BilingualText.h"
#include <QCoreApplication>
#include <QTemporaryDir>

using namespace vellumo;
using namespace vellumo::bench;
using namespace Qt::StringLiterals;

namespace {

/// Types the query letter by letter and returns the time of each until its rows were complete.
QList<double> type(NotesLibrary &library, const QString &query)
{
    QList<double> times;
    for (qsizetype length = 1; length <= query.size(); ++length) {
        times.append(timed([&] {
            library.setQuery(query.left(length));
            while (library.isSearching())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }));
    }
    return times;
}

void measure(int count)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"notes.json"_s);
    NoteMaker maker;
    writeStore(path, count, maker);
    NotesStore store(path);
    SystemClock clock;
    BilingualText texts([] { return u"English"_s; });
    NotesLibrary library(store, clock, texts);
    const QString label = u"dashboard, %1 notes: "_s.arg(count);
    printRow(label + u"take the notes"_s, {timed([&] { library.setShown(true); })}, "ms");

    const std::optional<double> budget =
        count == 10'000 ? std::optional<double>(50) : std::optional<double>();
    const QList<std::pair<QString, QString>> queries{
        {u"in every note"_s, u"tide turns"_s},
        {u"in a few"_s, u"1234"_s},
        {u"in none"_s, u"zebra crossing"_s},
        {u"Chinese"_s, u"潮水每天"_s},
    };
    for (const auto &[what, query] : queries) {
        library.setQuery({});
        printRow(label + u"search, "_s + what, type(library, query), "ms", budget);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Runs runs = runsFromArguments(QCoreApplication::arguments());
    measure(runs.quick ? 100 : 10'000);
    if (!runs.quick)
        measure(100'000);
    return EXIT_SUCCESS;
}
