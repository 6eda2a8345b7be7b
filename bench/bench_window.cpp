// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_window PROGRAM: the dashboard with few and many notes. Measures the time from a second
// start of the program to the window's pixels, scrolling, and the memory that remains after closing
// it.
#include "PixelMeter.h"
#include "ProcessUsage.h"
#include "Report.h"
#include "StoreWriter.h"
#include "driver/Program.h"
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>

using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString ours = u"vellumo"_s;

struct Bench {
    const Desktop &desktop;
    Runs runs;
    QString path;

    bool measure(int count) const
    {
        const QString label = u"dashboard, %1 notes: "_s.arg(count);
        Program vellumo(desktop, path, u"bench-window-%1"_s.arg(count));
        vellumo.setSetting(u"usesWithoutAccount"_s, u"true"_s);
        QDir().mkpath(QFileInfo(vellumo.notesFile()).path());
        NoteMaker maker;
        writeStore(vellumo.notesFile(), count, maker);
        if (!vellumo.start())
            return fails("the program did not start");
        const qint64 process = vellumo.process().processIdentifier();
        PixelMeter meter;
        meter.waitForRest(300ms, 5s);
        const Memory before = memoryOf(process);

        QList<double> first;
        QList<double> again;
        for (int run = 0; run < runs.of(9); ++run) {
            const auto other = vellumo.another();
            const auto seen = meter.watch(ours, [&] { other->launch(); });
            if (!seen)
                return fails("no window was seen");
            if (!close(meter, run + 1 < runs.of(9)))
                return fails("the window did not close");
            (run == 0 ? first : again).append(seen->content);
        }
        printRow(label + u"start of another to the window's pixels, first time"_s, first, "ms");
        if (!again.isEmpty())
            printRow(label + u"the same, shown again"_s, again, "ms");
        scroll(label, process);
        const Memory open = memoryOf(process);
        if (!close(meter, true))
            return fails("the window did not close at the end");
        meter.waitForRest(1s, 5s);
        const Memory after = memoryOf(process);
        printRow(label + u"private dirty memory before"_s, {before.privateDirty}, "MB");
        printRow(label + u"private dirty memory, shown and scrolled"_s, {open.privateDirty}, "MB");
        printRow(label + u"private dirty memory, closed"_s, {after.privateDirty}, "MB");
        return vellumo.process().isRunning() || fails("the program ended");
    }

private:
    /// Returns false always.
    static bool fails(const char *reason)
    {
        std::fprintf(stderr, "bench_window: %s\n", reason);
        return false;
    }

    /// Returns the dashboard, which is wider than the pill.
    [[nodiscard]] std::optional<WindowId> window() const
    {
        constexpr int leastWidth = 600;
        for (const WindowId id : desktop.windows(ours)) {
            if (desktop.geometry(id).width() >= leastWidth)
                return id;
        }
        return std::nullopt;
    }

    /// Closes the window with the keyboard, unless it should stay open.
    [[nodiscard]] bool close(PixelMeter &meter, bool closes) const
    {
        meter.waitForRest(300ms, 5s);
        const auto shown = window();
        if (!shown || !closes)
            return shown.has_value();
        if (!desktop.activate(*shown))
            return false;
        desktop.chord(Key::ControlLeft, Key::W);
        const bool isClosed = waitUntil([&] { return !desktop.isVisible(*shown); });
        meter.waitForRest(300ms, 5s);
        return isClosed;
    }

    void scroll(const QString &label, qint64 process) const
    {
        constexpr quint8 wheelDown = 5;
        constexpr quint8 keyF = 41;
        const auto shown = window();
        if (!shown)
            return;
        desktop.activate(*shown);
        desktop.chord(Key::ControlLeft, keyF); // to the list of all notes
        PixelMeter meter;
        meter.waitForRest(700ms, 5s);
        const QRect frame = desktop.geometry(*shown);
        const QPoint list(frame.left() + (frame.width() * 2 / 3), frame.center().y());
        desktop.moveTo(list);
        meter.waitForRest(700ms, 5s);
        const int turns = runs.quick ? 5 : 200;
        const QImage top = desktop.pixels(frame);
        const Usage before = usageOf(process);
        for (int turn = 0; turn < turns; ++turn) {
            desktop.click(list, 1, wheelDown);
            static_cast<void>(waitUntil([] { return false; }, 16ms));
        }
        meter.waitForRest(300ms, 5s);
        const Usage after = usageOf(process);
        const bool hasMoved = desktop.pixels(frame) != top;
        printRow(label + u"processor time of a turn of the wheel"_s,
                 hasMoved ? QList<double>{(after.processorMs - before.processorMs) / turns}
                          : QList<double>(),
                 "ms");
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const Desktop desktop;
    const Bench bench{desktop, runsFromArguments(arguments), arguments.last()};
    bool isWell = true;
    for (const int count : bench.runs.quick ? QList<int>{100} : QList<int>{100, 10'000, 100'000})
        isWell = bench.measure(count) && isWell;
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}
