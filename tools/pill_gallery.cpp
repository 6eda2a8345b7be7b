// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Shows the pill's states for review: pill_gallery [--zh]. Each line of input shows another state,
// until "quit" or the end of the input. Prints the cost of each frame.

#include "NoMonitors.h"
#include "pill/NotesEntranceController.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "platform/qt/SystemClock.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/QtScreens.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include "ui/look/SystemLook.h"
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHash>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

ReadingNote noteOf(const QString &source, const QString &meaning, int followUps = 0)
{
    ReadingNote note;
    note.id = QUuid::createUuid();
    note.sourceText = source;
    note.explanation = meaning;
    note.followUps.resize(followUps);
    return note;
}

QList<ReadingNote> fewNotes()
{
    return {noteOf(u"Middleware sits between the operating system and the applications."_s,
                   u"指的是一层“夹在中间”的软件:应用不直接跟系统打交道"_s, 2),
            noteOf(u"ubiquitous"_s, u"无处不在的;源自拉丁语 ubique(到处)"_s),
            noteOf(u"the tragedy of the commons"_s, u"公地悲剧:共享资源被过度使用"_s, 1),
            noteOf(u"法无禁止即可为"_s, u"What the law does not forbid, one may do."_s)};
}

QList<ReadingNote> longNotes()
{
    QList<ReadingNote> notes;
    for (int i = 0; i < 12; ++i) {
        notes
            << noteOf(QString(u"A long sentence that goes on and on. "_s).repeated(300),
                      QString(u"很长的解释,一直写下去。"_s).repeated(300), i % 3 * 50)
            << noteOf(
                   QString(u"选中的文字很长,没有空格也没有尽头"_s).repeated(2000),
                   u"<b>bold</b> <img src=\"x\"> gjpqy\r\n\tÅÉ مرحبا 👩‍👩‍👧‍👦"_s);
    }
    return notes;
}

/// Cached, since creating the notes takes longer than showing them.
const QList<ReadingNote> &manyNotes(int count)
{
    static QHash<int, QList<ReadingNote>> made;
    QList<ReadingNote> &notes = made[count];
    if (!notes.isEmpty()) {
        return notes;
    }
    notes.reserve(count);
    for (int i = 0; i < count; ++i) {
        notes << noteOf(u"note number %1"_s.arg(i), u"meaning %1 解释"_s.arg(i), i % 4);
    }
    return notes;
}

void show(const QString &state, NotesEntranceController &entrance)
{
    const auto list = [&entrance](const QList<ReadingNote> &notes) {
        entrance.showNotesList(notes, [](const ReadingNote &note) {
            std::cout << "chosen " << note.sourceText.left(30).toStdString() << std::endl;
        });
    };
    const QStringList words = state.split(u' ');
    if (words.first() == "count"_L1) {
        entrance.show(words.value(1).toInt(), [&entrance, list] { list(fewNotes()); });
    } else if (state == "attention"_L1 || state == "rest"_L1) {
        entrance.setHighlighted(state == "attention"_L1);
    } else if (state == "empty"_L1) {
        list({});
    } else if (state == "few"_L1) {
        list(fewNotes());
    } else if (state == "long"_L1) {
        list(longNotes());
    } else if (words.first() == "many"_L1) {
        list(manyNotes(words.value(1).toInt()));
    } else if (state == "collapse"_L1) {
        entrance.collapse();
    } else if (state == "demo"_L1) {
        entrance.playOnboardingDemo(fewNotes().first(),
                                    [] { std::cout << "demo over" << std::endl; });
    } else if (state == "quit"_L1) {
        QCoreApplication::exit(); // quit() asks the panels, which do not close
    }
}

/// Prints the time from a command until each following frame was painted.
void watchFrames(const QElapsedTimer &sinceCommand)
{
    const auto windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        auto *quick = qobject_cast<QQuickWindow *>(window);
        if (quick != nullptr && !quick->property("watched").toBool()) {
            quick->setProperty("watched", true);
            QObject::connect(quick, &QQuickWindow::frameSwapped, quick, [&sinceCommand, quick] {
                std::cout << "frame " << quick->width() << 'x' << quick->height() << " after "
                          << static_cast<double>(sinceCommand.nsecsElapsed()) / 1e6 << " ms\n";
            });
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QtFloatingWindows::chooseRenderer();
    const QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();

    const bool chinese = QCoreApplication::arguments().contains(u"--zh"_s);
    QQmlEngine engine;
    prepareEngine(engine);
    BilingualText texts([chinese] { return chinese ? u"Chinese"_s : u"English"_s; });
    QtFloatingWindows windows(engine,
                              [&engine] { return SystemLook::of(engine)->isMotionReduced(); });
    const QtScreens screens;
    NoMonitors monitors;
    const QTemporaryDir folder;
    SettingsDefaultsStore defaults(folder.filePath(u"pill.ini"_s));
    SystemClock clock;
    NotesEntranceController entrance({windows, screens, monitors, defaults, clock, texts});

    QElapsedTimer sinceCommand;
    const QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::exit(); // quit() asks the panels, which do not close
            return;
        }
        sinceCommand.start();
        show(QString::fromStdString(line), entrance);
        std::cout << "returned " << line << ' '
                  << static_cast<double>(sinceCommand.nsecsElapsed()) / 1e6 << " ms" << std::endl;
        watchFrames(sinceCommand);
    });
    return QGuiApplication::exec();
}
