// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_process PROGRAM: start time, memory and idle processor time.
#include "PixelMeter.h"
#include "ProcessUsage.h"
#include "Report.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include <QElapsedTimer>
#include <QGuiApplication>

using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

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

    // work after the start is finished before the idle time begins
    const qint64 process = vellumo.process().processIdentifier();
    const std::chrono::milliseconds span = runs.quick ? 500ms : 60s;
    static_cast<void>(waitUntil([] { return false; }, runs.quick ? 100ms : 5s));
    const Usage before = usageOf(process);
    QElapsedTimer timer;
    timer.start();
    static_cast<void>(waitUntil([&] { return timer.hasExpired(span.count()); }, span * 2));
    const double seconds = static_cast<double>(timer.elapsed()) / 1000;
    const Usage after = usageOf(process);
    const Memory memory = memoryOf(process);

    printRow(u"resident memory, idle"_s, {memory.resident}, "MB", 60);
    printRow(u"private dirty memory, idle"_s, {memory.privateDirty}, "MB", 10);
    printRow(u"processor time, idle"_s, {(after.processorMs - before.processorMs) / seconds / 10},
             "%", 0.1);
    printRow(u"wake-ups a second, idle"_s, {(after.wakeUps - before.wakeUps) / seconds}, "/s", 0.5);
    return vellumo.process().isRunning() ? EXIT_SUCCESS : EXIT_FAILURE;
}
