// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_panel PROGRAM: time from the second tap until the panel's pixels are on the screen, in a
// browser and in an editor.
#include "PixelMeter.h"
#include "Report.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include "driver/WebPage.h"
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <thread>

using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Place {
    QString name;
    double budget;
};

/// Double-taps repeatedly in the window in front, which has a selection. The first panel after the
/// start is a row of its own.
bool measure(const Desktop &desktop, const Program &vellumo, const Place &place, int runs)
{
    PixelMeter meter;
    QList<double> first;
    QList<double> mapped;
    QList<double> content;
    for (int run = 0; run <= runs; ++run) {
        meter.waitForRest(300ms, 3s);
        desktop.pressForAMoment(Key::AltLeft);
        std::this_thread::sleep_for(140ms); // between presses, like a user
        const auto seen = meter.watch(u"vellumo"_s, [&] { desktop.pressForAMoment(Key::AltLeft); });
        if (!seen || !vellumo.waitForAnswer())
            return false;
        if (run == 0) {
            first.append(seen->content);
        } else {
            mapped.append(seen->mapped);
            content.append(seen->content);
        }
        desktop.doubleTap();
        if (!vellumo.waitForNoPanel())
            return false;
    }
    printRow(u"second tap to pixels, "_s + place.name, content, "ms", place.budget);
    printRow(u"second tap to window, "_s + place.name, mapped, "ms");
    printRow(u"second tap to pixels, first after start, "_s + place.name, first, "ms", 30);
    return true;
}

bool measureEditor(const Desktop &desktop, const QString &path, int runs)
{
    const QTemporaryDir files;
    QFile file(files.filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write("The tide turns twice a day.") < 0)
        return false;
    file.close();
    Application editor(mousepad(file.fileName()));
    if (!editor.isInstalled()) {
        printSkipped(u"second tap to pixels, GTK editor"_s, u"Mousepad is not installed"_s);
        return true;
    }
    Program vellumo(desktop, path, u"bench-editor"_s);
    if (!vellumo.start())
        return false;
    const auto window = editor.start(desktop);
    if (!window || !desktop.activate(*window))
        return false;
    const QImage plain = desktop.pixels(desktop.geometry(*window));
    const bool selected = waitUntil([&] {
        desktop.chord(Key::ControlLeft, Key::A);
        return waitUntil([&] { return desktop.pixels(desktop.geometry(*window)) != plain; }, 300ms);
    });
    return selected && measure(desktop, vellumo, {u"GTK editor"_s, 15}, runs);
}

bool measureBrowser(const Desktop &desktop, const QString &path, int runs)
{
    WebPage page(desktop, u"tides"_s, u"<p id=sentence>The tide turns twice a day.</p>"_s);
    if (!page.isInstalled()) {
        printSkipped(u"second tap to pixels, Firefox"_s, u"Firefox is not installed"_s);
        return true;
    }
    Program vellumo(desktop, path, u"bench-browser"_s);
    return vellumo.start() && page.open() && measure(desktop, vellumo, {u"Firefox"_s, 25}, runs);
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const Runs runs = runsFromArguments(arguments);
    const Desktop desktop;
    const bool editor = measureEditor(desktop, arguments.last(), runs.of(15));
    const bool browser = measureBrowser(desktop, arguments.last(), runs.of(15));
    return editor && browser ? EXIT_SUCCESS : EXIT_FAILURE;
}
