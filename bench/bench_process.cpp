// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_process PROGRAM: what the program costs while nobody uses it: its start, its memory, its
// processor time.
#include "PixelMeter.h"
#include "Report.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>

using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The number after a name in a file such as /proc/PID/status.
double valueOf(const QByteArray &text, const QByteArray &name)
{
    const qsizetype at = text.indexOf('\n' + name + ':');
    if (at < 0)
        return 0;
    const QByteArray line = text.mid(at + name.size() + 2).trimmed();
    return line.left(line.indexOf('\n')).split(' ').first().toDouble();
}

struct Usage {
    double processorMs = 0;
    double wakeUps = 0;
};

/// Of all threads since they began.
Usage usageOf(qint64 process)
{
    Usage usage;
    const QString tasks = u"/proc/%1/task"_s.arg(process);
    const QStringList threads = QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        const QString folder = tasks + u'/' + thread;
        usage.processorMs +=
            contentOf(folder + u"/schedstat"_s).split(' ').first().toDouble() / 1e6;
        usage.wakeUps += valueOf(contentOf(folder + u"/status"_s), "voluntary_ctxt_switches");
    }
    return usage;
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const Runs runs = runsFromArguments(arguments);
    const Desktop desktop;

    QList<double> ready;
    Program vellumo(desktop, arguments.last(), u"bench-process"_s);
    for (int run = 0; run < runs.of(11); ++run) {
        bool started = false;
        ready.append(timed([&] { started = vellumo.start(); }));
        if (!started)
            return EXIT_FAILURE;
        if (run + 1 < runs.of(11))
            vellumo.process().end();
    }
    printRow(u"start to ready"_s, ready, "ms", 120);

    vellumo.process().end();
    QList<double> pixels;
    PixelMeter meter;
    for (int run = 0; run < runs.of(11); ++run) {
        meter.waitForRest(200ms, 3s);
        const auto seen = meter.watch(u"vellumo"_s, [&] { vellumo.launch(); });
        if (!seen)
            return EXIT_FAILURE;
        pixels.append(seen->content);
        vellumo.process().end();
    }
    printRow(u"start to the pill's pixels"_s, pixels, "ms", 120);
    if (!vellumo.start())
        return EXIT_FAILURE;

    // what is left to do after the start is done before the idle time begins
    const qint64 process = vellumo.process().processIdentifier();
    const std::chrono::milliseconds span = runs.quick ? 500ms : 60s;
    static_cast<void>(waitUntil([] { return false; }, runs.quick ? 100ms : 5s));
    const Usage before = usageOf(process);
    QElapsedTimer timer;
    timer.start();
    static_cast<void>(waitUntil([&] { return timer.hasExpired(span.count()); }, span * 2));
    const double seconds = static_cast<double>(timer.elapsed()) / 1000;
    const Usage after = usageOf(process);
    const QByteArray memory = '\n' + contentOf(u"/proc/%1/smaps_rollup"_s.arg(process));

    printRow(u"resident memory, idle"_s, {valueOf(memory, "Rss") / 1024}, "MB", 60);
    printRow(u"private dirty memory, idle"_s, {valueOf(memory, "Private_Dirty") / 1024}, "MB", 10);
    printRow(u"processor time, idle"_s, {(after.processorMs - before.processorMs) / seconds / 10},
             "%", 0.1);
    printRow(u"wake-ups a second, idle"_s, {(after.wakeUps - before.wakeUps) / seconds}, "/s", 0.5);
    return vellumo.process().isRunning() ? EXIT_SUCCESS : EXIT_FAILURE;
}
