// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_sync BACKEND: pushes and pulls few and many notes over loopback. Measures duration, memory
// and the longest block of the main thread. Needs no display.
#include "BackendProcess.h"
#include "Report.h"
#include "notes/NotesStore.h"
#include "platform/qt/QtHttpSession.h"
#include "platform/qt/SystemClock.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncFakes.h"
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <malloc.h>

using namespace vellumo;
using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Home {
    Home(const QString &file, const Environment &environment, const QString &token)
        : history({auth, session, clock, lookupIn(environment)})
        , store(file)
    {
        auth.token = std::optional(token);
    }

    FakeAuth auth;
    QtHttpSession session;
    SystemClock clock;
    DataConnectHistory history;
    NotesStore store;
    NotesSyncEngine engine{store, history, auth};
};

/// Runs an operation of the engine and returns its milliseconds. A timer of 5 ms measures the
/// delays of the main thread.
double run(const std::function<void(QObject *, NotesSyncEngine::Done)> &operation,
           QList<double> &delays)
{
    QEventLoop loop;
    QTimer beat;
    beat.setTimerType(Qt::PreciseTimer);
    QElapsedTimer sinceBeat;
    sinceBeat.start();
    const auto note = [&] {
        delays.append(std::max(0.0, (static_cast<double>(sinceBeat.nsecsElapsed()) / 1e6) - 5));
        sinceBeat.restart();
    };
    beat.callOnTimeout(note);
    beat.start(5ms);
    const double time = timed([&] {
        operation(&loop, [&loop] { loop.quit(); });
        loop.exec();
    });
    note(); // the last block may have been a long one
    return time;
}

double percentile95(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() * 95 / 100);
}

double kilobytes(const QByteArray &name)
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = file.readAll();
    return text.mid(text.indexOf('\n' + name + ':') + name.size() + 2)
        .trimmed()
        .split(' ')
        .first()
        .toDouble();
}

/// Resets the peak memory of this process.
void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void measure(const QString &program, int count, int runs)
{
    QList<double> pushRate;
    QList<double> pullRate;
    QList<double> pushDelays;
    QList<double> pullDelays;
    QList<double> pullMemory;
    for (int i = 0; i < runs; ++i) {
        const QTemporaryDir folder;
        const BackendProcess backend(program, folder.filePath(u"backend.sqlite"_s));
        const QString token = backend.tables().newIdToken(backend.uid(), 1h);
        const QString path = folder.filePath(u"here.json"_s);
        writePendingNotes(path, count);

        Home here(path, backend.environment(), token);
        const auto push = [&here](QObject *context, NotesSyncEngine::Done done) {
            here.engine.pushPending(context, std::move(done));
        };
        pushRate.append(count / run(push, pushDelays) * 1000);
        if (!here.store.pendingSync().isEmpty())
            qFatal("not all notes were pushed");

        Home there(folder.filePath(u"there.json"_s), backend.environment(), token);
        const auto pull = [&there](QObject *context, NotesSyncEngine::Done done) {
            there.engine.pullAndMerge(context, std::move(done));
        };
        ::malloc_trim(0); // memory freed by the push would hide that of the pull
        forgetPeak();
        const double before = kilobytes("VmRSS");
        pullRate.append(count / run(pull, pullDelays) * 1000);
        pullMemory.append((kilobytes("VmHWM") - before) / 1024);
        if (there.store.noteCount() != count)
            qFatal("not all notes were pulled");
    }
    const QString label = u"sync, %1 notes: "_s.arg(count);
    printRow(label + u"pushed"_s, pushRate, "notes/s");
    printRow(label + u"pulled"_s, pullRate, "notes/s");
    printRow(label + u"main thread away during a push, 95th percentile"_s,
             {percentile95(pushDelays)}, "ms", 100);
    printRow(label + u"the same, longest"_s,
             {*std::max_element(pushDelays.cbegin(), pushDelays.cend())}, "ms");
    printRow(label + u"main thread away during a pull, longest"_s,
             {*std::max_element(pullDelays.cbegin(), pullDelays.cend())}, "ms");
    printRow(label + u"memory of a pull at its peak"_s, pullMemory, "MB");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Runs runs = runsFromArguments(arguments);
    measure(arguments.last(), 100, runs.of(5));
    if (!runs.quick) {
        measure(arguments.last(), 1000, 3);
        measure(arguments.last(), 10'000, 3);
    }
    return 0;
}
