// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// bench_sync_panel BACKEND PROGRAM: time from the second tap until the panel is on the screen while
// the program pushes many notes.
#include "BackendProcess.h"
#include "PixelMeter.h"
#include "Report.h"
#include "driver/Application.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <thread>

using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray sentence("The tide turns twice a day.");

/// Double-taps repeatedly while notes are being pushed.
bool measureOnce(const Desktop &desktop, const QStringList &programs, int count,
                 QList<double> &content)
{
    const QTemporaryDir folder;
    const BackendProcess backend(programs.first(), folder.filePath(u"backend.sqlite"_s));
    keepSession(backend.tables().newRefreshToken(backend.uid()), backend.uid(), u"r@e.org"_s);
    Program vellumo(desktop, programs.last(), u"bench-sync"_s);
    for (const auto &[name, value] : backend.environment())
        vellumo.setEnvironment(name, value);
    // Otherwise the upload needs the user's answer.
    vellumo.setSetting(u"notesOwner"_s, backend.uid());
    QDir().mkpath(QFileInfo(vellumo.notesFile()).path());
    writePendingNotes(vellumo.notesFile(), count);

    QFile file(folder.filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(sentence) < 0)
        return false;
    file.close();
    Application editor(qtTextEdit(file.fileName()));
    const auto window = editor.start(desktop);
    if (!window || !desktop.activate(*window))
        return false;
    const bool isSelected = waitUntil([&] {
        desktop.chord(Key::ControlLeft, Key::A);
        return waitUntil(
            [&] {
                return editor.standardOutput().endsWith(u"selected %1\n"_s.arg(sentence.size()));
            },
            500ms);
    });
    if (!isSelected || !vellumo.start())
        return false;
    if (!waitUntil([&] { return backend.tables().noteCount(backend.uid()) > 0; }))
        return false;
    PixelMeter meter;
    int missed = 0; // on a busy machine the taps may be too far apart for a double tap
    while (missed < 5) {
        std::this_thread::sleep_for(450ms); // more taps sooner would be another double tap
        desktop.pressForAMoment(Key::AltLeft);
        std::this_thread::sleep_for(140ms); // between presses, like a user
        const auto seen = meter.watch(u"vellumo"_s, [&] { desktop.pressForAMoment(Key::AltLeft); });
        if (!seen && vellumo.panel())
            return false;
        if (!seen) {
            ++missed;
            continue;
        }
        if (backend.tables().noteCount(backend.uid()) >= count)
            return true;
        content.append(seen->content);
        // a panel closed before its answer is shown again with the answer
        if (!vellumo.waitForAnswer())
            return false;
        desktop.doubleTap();
        if (!vellumo.waitForNoPanel())
            return false;
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const Runs runs = runsFromArguments(arguments);
    const Desktop desktop;
    const int count = runs.quick ? 2000 : 10'000;
    QList<double> content;
    for (int run = 0; run < runs.of(3); ++run) {
        if (!measureOnce(desktop, arguments.mid(arguments.size() - 2), count, content))
            return EXIT_FAILURE;
    }
    const QString label = u"second tap to pixels while %1 notes are pushed"_s.arg(count);
    printRow(label, content, "ms");
    std::sort(content.begin(), content.end());
    if (!content.isEmpty())
        printRow(label + u", 95th percentile"_s, {content.at(content.size() * 95 / 100)}, "ms",
                 100);
    return EXIT_SUCCESS;
}
