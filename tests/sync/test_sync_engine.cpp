// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Waiting.h"
#include "notes/NotesStore.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeHttpSession.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncFakes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

namespace {

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};

/// One home with everything that syncing needs. The test is the network.
struct Home {
    QTemporaryDir folder;
    FakeAuth auth;
    FakeHttpSession session;
    FakeClock clock;
    DataConnectHistory history{{auth, session, clock,
                                lookupIn({{u"VELLUMO_DATACONNECT_URL"_s, u"https://d.example/c"_s},
                                          {u"FIREBASE_API_KEY"_s, u"k"_s}})}};
    NotesStore store{folder.filePath(u"vellumo/notes.json"_s)};
    bool isAllowed = true;
    NotesSyncEngine engine{store, history, auth, [this] { return isAllowed; }};
    int completions = 0;

    void push()
    {
        engine.pushPending(&folderContext_, [this] { ++completions; });
    }

    void pull()
    {
        engine.pullAndMerge(&folderContext_, [this] { ++completions; });
    }

    /// Waits for the next request, answers it and returns what it asked for: the operation's first
    /// letter and, of a follow-up, its question.
    QString serve(const QByteArray &body)
    {
        const auto expected = ++served_;
        if (!waitUntil([&] { return session.requests.size() >= expected; }))
            return u"nothing"_s;
        const QJsonObject asked =
            QJsonDocument::fromJson(session.requests.at(expected - 1).body).object();
        session.answer(HttpResponse{.status = 200, .body = body});
        return asked.value("operationName"_L1).toString().left(1)
            + asked.value("variables"_L1)["question"_L1].toString();
    }

    [[nodiscard]] bool isQuiet()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return session.requests.size() == served_;
    }

private:
    QObject folderContext_;
    qsizetype served_ = 0;
};

const QByteArray created = R"({"data":{"note_insert":{"id":"x"}}})";
const QByteArray done = R"({"data":{}})";
const QByteArray failed = R"({"errors":[{"message":"no"}]})";

QByteArray listOf(const QString &text)
{
    return QString(uR"({"data":{"notes":[{"id":"%1","sourceText":"%2","explanation":"e",)"_s
                   + uR"("createdAt":"2026-01-01T00:00:00.5Z","followUps_on_note":[]}]}})"_s)
        .arg(QUuid::createUuid().toString(QUuid::Id128), text)
        .toUtf8();
}

QSet<QUuid> idsOf(const QList<ReadingNote> &notes)
{
    QSet<QUuid> ids;
    for (const ReadingNote &note : notes) {
        ids.insert(note.id);
    }
    return ids;
}

} // namespace

class TestSyncEngine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pushesWhatIsPending()
    {
        Home home;
        const ReadingNote note = makeNote(u"a"_s, 3);
        home.store.add(note, page);
        home.store.markSynced(note.id, 1);
        home.push();
        QCOMPARE(home.completions, 0); // never before the call returns
        QCOMPARE(home.serve(done), u"A1"_s);
        QCOMPARE(home.serve(done), u"A2"_s);
        QVERIFY(waitUntil([&] { return home.completions == 1; }));
        QVERIFY(home.store.pendingSync().isEmpty());

        home.store.add(makeNote(u"b"_s), page);
        home.push();
        QCOMPARE(home.serve(created), u"C"_s);
        QVERIFY(waitUntil([&] { return home.completions == 2; }));
        home.push();
        QVERIFY(waitUntil([&] { return home.completions == 3; }));
        QVERIFY(home.isQuiet());
        const QString file = home.folder.filePath(u"vellumo/notes.json"_s);
        QVERIFY(waitUntil([&] { return NotesStore(file).pendingSync().isEmpty(); }));
    }

    void callsDuringAPassMakeOneMore()
    {
        Home home;
        home.store.add(makeNote(u"a"_s), page);
        home.push();
        home.push();
        QVERIFY(waitUntil([&] { return home.session.requests.size() == 1; }));
        home.store.add(makeNote(u"b"_s), page);
        home.push();
        home.push();
        QVERIFY(waitUntil([&] { return home.completions == 3; })); // all but the one at work
        QCOMPARE(home.serve(failed), u"C"_s);
        // the next pass has both notes and is the last one
        QCOMPARE(home.serve(created), u"C"_s);
        QCOMPARE(home.serve(failed), u"C"_s);
        QVERIFY(waitUntil([&] { return home.completions == 4; }));
        QVERIFY(home.isQuiet());
    }

    void deletedNotesStayHere()
    {
        Home home;
        for (const QString &text : {u"a"_s, u"b"_s, u"c"_s}) {
            home.store.add(makeNote(text, 1), page);
        }
        home.push();
        QVERIFY(waitUntil([&] { return home.session.requests.size() == 1; }));
        home.store.remove(idsOf(home.store.allNotes()));
        QCOMPARE(home.serve(created), u"C"_s); // was on its way
        QVERIFY(waitUntil([&] { return home.completions == 1; }));
        QVERIFY(home.isQuiet());
    }

    void marksWhatWasSentAndNotWhatCameMeanwhile()
    {
        Home home;
        ReadingNote note = makeNote(u"a"_s, 1);
        home.store.add(note, page);
        home.push();
        QCOMPARE(home.serve(created), u"C"_s);
        note.followUps.append({QUuid::createUuid(), u"later"_s, u"a"_s});
        home.store.update(note, page);
        QCOMPARE(home.serve(done), u"A0"_s);
        QVERIFY(waitUntil([&] { return home.completions == 1; }));
        QCOMPARE(home.store.pendingSync().value(0).state, (NoteSyncState{true, 1}));
        home.push();
        QCOMPARE(home.serve(done), u"Alater"_s);
    }

    void passEndsWhereEveryNoteWouldFail_data()
    {
        QTest::addColumn<int>("status"); // 0: no answer
        QTest::addColumn<int>("requests"); // of a pass with three notes, and of the one after it
        QTest::addColumn<int>("further");
        QTest::newRow("no connection") << 0 << 1 << 3;
        QTest::newRow("session refused") << 401 << 1 << 3;
        QTest::newRow("refused") << 500 << 3 << 3;
        QTest::newRow("too large") << 413 << 3 << 2;
    }

    void passEndsWhereEveryNoteWouldFail()
    {
        QFETCH(int, status);
        QFETCH(int, requests);
        QFETCH(int, further);
        Home home;
        for (int i = 0; i < 3; ++i)
            home.store.add(makeNote(QString::number(i)), page);
        const auto answered = [&](int failing) {
            const int completions = home.completions;
            const qsizetype before = home.session.requests.size();
            home.push();
            const bool hasEnded = waitUntil([&] {
                if (home.session.requests.size() > before) {
                    const bool isFirst = failing-- > 0;
                    home.session.answer(!isFirst ? HttpResponse{.status = 500}
                                            : status == 0
                                            ? Result<HttpResponse, HttpError>(HttpError{})
                                            : HttpResponse{.status = status});
                }
                return home.completions > completions;
            });
            return hasEnded ? home.session.requests.size() - before : -1;
        };
        QCOMPARE(answered(1), requests);
        QCOMPARE(answered(0), further);
    }

    void signedOutTouchesNothing()
    {
        for (const bool isSignedIn : {false, true}) {
            Home home;
            home.store.add(makeNote(u"a"_s), page);
            home.isAllowed = !isSignedIn;
            if (!isSignedIn)
                home.auth.signedIn.reset();
            home.push();
            home.pull();
            QVERIFY(waitUntil([&] { return home.completions == 2; }));
            QVERIFY(home.isQuiet());
        }
    }

    void signingOutEndsAPass()
    {
        Home home;
        home.store.add(makeNote(u"a"_s), page);
        home.store.add(makeNote(u"b"_s), page);
        home.store.add(makeNote(u"c"_s), page);
        home.push();
        home.pull();
        QVERIFY(waitUntil([&] { return home.session.requests.size() == 2; }));
        home.auth.signedIn->email = u"new@example.org"_s; // of the same account
        QCOMPARE(home.serve(created), u"C"_s);
        QVERIFY(waitUntil([&] { return home.session.requests.size() == 3; }));
        home.auth.signedIn->uid = u"another"_s;
        QCOMPARE(home.serve(listOf(u"of the first one"_s)), u"L"_s);
        QCOMPARE(home.serve(created), u"C"_s);
        QVERIFY(waitUntil([&] { return home.completions == 2; }));
        QVERIFY(home.isQuiet());
        QCOMPARE(home.store.noteCount(), 3);
        QCOMPARE(home.store.pendingSync().size(), 1); // accepted follow-ups are not sent again
    }
};

QTEST_GUILESS_MAIN(TestSyncEngine)
#include "test_sync_engine.moc"
