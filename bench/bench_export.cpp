// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Writes many notes to a file in each format and counts them for the insights. Measures the
// duration and the longest block of the main thread. Needs no display.
#include "NoteMaker.h"
#include "Report.h"
#include "export/NotesExport.h"
#include "insights/NotesInsights.h"
#include "mainwindow/WindowDesk.h"
#include <QCoreApplication>
#include <QTemporaryDir>
#include <numeric>

using namespace vellumo;
using namespace vellumo::bench;
using namespace Qt::StringLiterals;

namespace {

/// Measures the maximum delay of a timer of one millisecond in the event loop.
class LongestTurn {
public:
    LongestTurn()
    {
        QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] {
            const double turn = static_cast<double>(sinceTurn_.nsecsElapsed()) / 1e6;
            longest_ = std::max(longest_, turn);
            sinceTurn_.start();
        });
        sinceTurn_.start();
        turns_.setTimerType(Qt::PreciseTimer);
        turns_.start(1);
    }
    [[nodiscard]] double ms() const { return longest_; }

private:
    QTimer turns_;
    QElapsedTimer sinceTurn_;
    double longest_ = 0;
};

void waitFor(const std::function<bool()> &isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void measureExport(const QList<NoteWithContext> &notes, ExportFormat format, int runs)
{
    const QTemporaryDir folder;
    QList<int> all(notes.size());
    std::iota(all.begin(), all.end(), 0);
    QList<double> whole;
    QList<double> stops;
    for (int run = 0; run < runs; ++run) {
        NotesExport exporting;
        std::optional<NotesExport::Result> result;
        QObject::connect(&exporting, &NotesExport::finished, &exporting,
                         [&](const NotesExport::Result &r) { result = r; });
        const LongestTurn longest;
        whole.append(timed([&] {
            exporting.start({notes, all, format, true, QDateTime::currentDateTime(),
                             folder.filePath(u"notes"_s)});
            waitFor([&] { return result.has_value(); });
        }));
        stops.append(longest.ms());
        if (result->outcome != NotesExport::Outcome::Written)
            qFatal("not written: %s", qPrintable(result->detail));
    }
    const QString label = u"export, %1 notes, %2: "_s.arg(notes.size()).arg(fileSuffix(format));
    printRow(label + u"whole"_s, whole, "ms");
    printRow(label + u"main thread stops"_s, stops, "ms", 50);
}

void measureInsights(const QList<NoteWithContext> &notes, int runs)
{
    test::SampleNotes store;
    store.notes = notes;
    FakeClock clock;
    clock.now = notes.first().note.createdAt;
    BilingualText texts([] { return u"English"_s; });
    NotesLibrary library(store, clock, texts);
    library.setShown(true);
    QList<double> whole;
    QList<double> stops;
    for (int run = 0; run < runs; ++run) {
        NotesInsights insights(library, texts);
        const LongestTurn longest;
        whole.append(timed([&] {
            insights.setShown(true);
            waitFor([&] { return insights.isReady(); });
        }));
        QCoreApplication::processEvents(); // finishes the last iteration
        stops.append(longest.ms());
    }
    const QString label = u"insights, %1 notes: "_s.arg(notes.size());
    printRow(label + u"whole"_s, whole, "ms");
    printRow(label + u"main thread stops"_s, stops, "ms", 50);
}

void measure(int count, int runs)
{
    NoteMaker maker;
    QList<NoteWithContext> notes;
    for (int i = 0; i < count; ++i)
        notes.append({maker.note(), NoteMaker::context(i / 20)});
    std::sort(notes.begin(), notes.end(), [](const NoteWithContext &a, const NoteWithContext &b) {
        return a.note.createdAt > b.note.createdAt;
    });
    for (const auto format : {ExportFormat::Markdown, ExportFormat::Csv, ExportFormat::Json})
        measureExport(notes, format, runs);
    measureInsights(notes, runs);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Runs runs = runsFromArguments(QCoreApplication::arguments());
    measure(10'000, runs.of(9));
    if (!runs.quick)
        measure(100'000, 5);
    return 0;
}
