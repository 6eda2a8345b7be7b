// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// sync_home FILE TOKEN NAME: one run of a home whose notes are in FILE: makes a note with two
// follow-ups, adds one to the previous note, pushes, pulls, and ends. Prints what it has saved
// as soon as it has.
#include "notes/NotesStore.h"
#include "platform/qt/QtHttpSession.h"
#include "platform/qt/SystemClock.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncFakes.h"

#include <QCoreApplication>
#include <cstdio>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

namespace {

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};

void say(const ReadingNote &note)
{
    QStringList words{u"saved"_s, noteIdText(note.id)};
    for (const FollowUpExchange &exchange : note.followUps)
        words.append(exchange.question);
    std::puts(qPrintable(words.join(u' ')));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    FakeAuth auth;
    auth.token = std::optional(arguments.at(2));
    QtHttpSession session;
    SystemClock clock;
    const DataConnectHistory history(
        {auth, session, clock, [](const QString &key) -> std::optional<QString> {
             return qEnvironmentVariable(key.toLatin1().constData());
         }});
    NotesStore store(arguments.at(1));
    NotesSyncEngine engine(store, history, auth);

    const QList<ReadingNote> notes = store.allNotes();
    ReadingNote note = makeNote(arguments.at(3), 2);
    note.createdAt = static_cast<double>(notes.size());
    store.add(note, page);
    say(note);
    if (!notes.isEmpty()) {
        ReadingNote earlier = notes.first();
        earlier.followUps.append({QUuid::createUuid(), arguments.at(3), u"a"_s});
        store.update(earlier, page);
        say(earlier);
    }
    engine.pushPending(
        &engine, [&engine] { engine.pullAndMerge(&engine, [] { QCoreApplication::quit(); }); });
    return QCoreApplication::exec();
}
