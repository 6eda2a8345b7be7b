// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// The notes store with few and many notes: loading, adding, listing, merging and bookkeeping. Needs
// no display.
#include "Report.h"
#include "StoreWriter.h"
#include "notes/NotesStore.h"
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <ctime>

using namespace vellumo;
using namespace vellumo::bench;
using namespace Qt::StringLiterals;

namespace {

/// Scales the budgets of 10,000 notes, since saving and loading grow with the file.
std::optional<double> inProportion(int count, double atTenThousand)
{
    if (count < 10'000)
        return std::nullopt;
    return atTenThousand * count / 10'000;
}

double processorMs()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return (static_cast<double>(time.tv_sec) * 1e3) + (static_cast<double>(time.tv_nsec) / 1e6);
}

/// Measures the cost of a note's new state until it is in the file. In processor time, since the
/// store waits to collect several.
double bookkeepingSave(NotesStore &store, const ReadingNote &note, const QString &path)
{
    const qint64 before = QFileInfo(path).size();
    const double start = processorMs();
    store.markSynced(note.id, note.followUps.size());
    while (QFileInfo(path).size() == before) // "true" is shorter than "false"
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return processorMs() - start;
}

void measure(int count, int runs)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"notes.json"_s);
    NoteMaker maker;
    writeStore(path, count, maker);

    QList<double> load;
    QList<double> add;
    QList<double> list;
    QList<double> mark;
    QList<double> merge;
    QList<double> mergeKnown;
    const QString original = folder.filePath(u"original.json"_s);
    if (!QFile::rename(path, original))
        qFatal("cannot move the store");
    for (int run = 0; run < runs; ++run) {
        // each run starts without the notes of the previous one
        QFile::remove(path);
        if (!QFile::copy(original, path))
            qFatal("cannot copy the store");
        std::optional<NotesStore> store;
        load.append(timed([&] { store.emplace(path); }));
        const ReadingNote note = maker.note();
        add.append(timed([&] { store->add(note, NoteMaker::context(run)); }));
        QList<NoteWithContext> all;
        list.append(timed([&] { all = store->allNotesWithContexts(); }));
        if (all.size() < count)
            qFatal("%lld of %d notes were loaded", static_cast<long long>(all.size()), count);

        QList<ReadingNote> remote;
        for (int i = 0; i < 100; ++i)
            remote.append(maker.note());
        merge.append(timed([&] { store->mergeRemote(remote); }));
        mergeKnown.append(timed([&] { store->mergeRemote(store->allNotes()); }));

        mark.append(bookkeepingSave(*store, note, path));
    }
    const QString label = u"store, %1 notes: "_s.arg(count);
    printRow(label + u"load"_s, load, "ms", inProportion(count, 100));
    printRow(label + u"add, durably"_s, add, "ms", inProportion(count, 60));
    printRow(label + u"list with contexts"_s, list, "ms", inProportion(count, 10));
    printRow(label + u"bookkeeping save"_s, mark, "ms", inProportion(count, 10));
    printRow(label + u"merge 100 new"_s, merge, "ms");
    printRow(label + u"merge all known"_s, mergeKnown, "ms");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Runs runs = runsFromArguments(QCoreApplication::arguments());
    measure(100, runs.of(21));
    measure(10'000, runs.of(9));
    if (!runs.quick)
        measure(100'000, 3);
    return 0;
}
