// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_demo PROGRAM FOLDER [OPTION...]: uses vellumo on this display: opens a page in Firefox,
// selects a sentence, double-taps Alt, asks a follow-up, closes the panel. Prints the explanation
// and the note, and writes pictures of the screen to the folder.
#include "driver/Desktop.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include "driver/WebPage.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <cstdio>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QStringView article = uR"html(
<style>
body { font: 20px/1.6 serif; max-width: 44em; margin: 14em auto 4em; color: #222; }
h1 { font-size: 34px; }
</style>
<h1>What the tide gauge heard</h1>
<p>For a hundred and forty years the harbour at Lerrow has kept one of the longest records of the
sea's height that anyone has written down.</p>
<p><span id=sentence>The gauge itself is a float in a stilling well, a pipe so narrow at its foot
that waves cannot get in and only the tide can.</span> A pen draws the float's rise and fall on a
drum of paper that turns once a day.</p>
<p>Last winter the museum asked a class of schoolchildren to read the drums, one month each.</p>
)html";

void say(const QString &text)
{
    std::puts(qPrintable(text));
    std::fflush(stdout);
}

[[noreturn]] void fail(const QString &what, Program &program)
{
    say(u"The demonstration stopped: "_s + what);
    say(program.process().standardOutput() + program.process().errorOutput());
    std::exit(EXIT_FAILURE);
}

class Pictures {
public:
    Pictures(const Desktop &desktop, QString folder) : desktop_(desktop), folder_(std::move(folder))
    {
        QDir().mkpath(folder_);
    }

    void take(const QString &name)
    {
        const QString file = folder_ + u'/' + name + u".png"_s;
        desktop_.pixels().save(file);
        files_.append(file);
    }

    /// Takes a picture when the screen has stopped changing.
    void takeAtRest(const QString &name)
    {
        QImage last;
        QElapsedTimer unchanged;
        static_cast<void>(waitUntil([&] {
            const QImage now = desktop_.pixels();
            if (now != last)
                unchanged.start();
            last = now;
            return unchanged.hasExpired(400);
        }));
        take(name);
    }

    [[nodiscard]] QStringList files() const { return files_; }

private:
    const Desktop &desktop_;
    QString folder_;
    QStringList files_;
};

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        say(u"vellumo_demo PROGRAM FOLDER [OPTION...]"_s);
        return EXIT_FAILURE;
    }
    const Desktop desktop;
    Pictures pictures(desktop, arguments.at(2));
    WebPage page(desktop, u"tide-gauge"_s, article.toString());
    Program program(desktop, arguments.at(1));
    if (!program.start(Program::inBackground() + arguments.mid(3)))
        fail(u"vellumo did not start"_s, program);
    if (!page.open())
        fail(u"Firefox did not show the page, or nothing was selected"_s, program);
    say(u"Selected:\n  "_s + page.selection());

    desktop.doubleTap();
    if (!program.waitForPanel())
        fail(u"the panel did not appear"_s, program);
    pictures.take(u"1-loading"_s);
    if (!program.waitForAnswer())
        fail(u"no explanation came"_s, program);
    pictures.takeAtRest(u"2-explanation"_s);

    const QString question = u"Why is the pipe so narrow"_s;
    if (!program.ask(question))
        fail(u"the follow-up field took no text"_s, program);
    pictures.take(u"3-follow-up-asked"_s);
    if (!program.waitForText(question + u"」"_s))
        fail(u"the follow-up was not answered"_s, program);
    pictures.takeAtRest(u"4-follow-up-answered"_s);

    desktop.tap(Key::Escape);
    if (!program.waitForNoPanel() || !program.waitForNotes(1))
        fail(u"no note was saved"_s, program);
    const QJsonObject note = program.notes().constFirst();
    say(u"Explanation:\n  "_s + note.value("translation"_L1).toString() + u"\n  "_s
        + note.value("explanation"_L1).toString());
    say(u"Saved note:"_s);
    say(QString::fromUtf8(QJsonDocument(note).toJson()).trimmed());
    say(u"Pictures:\n  "_s + pictures.files().join(u"\n  "_s));
    return program.process().end() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
