// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Waiting.h"
#include "notes/NotesStore.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "settings/SettingsKeys.h"
#include "sync/NotesOwnership.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncFakes.h"
#include "sync/SyncStatus.h"

#include <QTemporaryDir>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

namespace {

using Problem = SyncError::Kind;

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};
const QByteArray oneListed = R"({"data":{"notes":[{"id":"6f0d5c1e5b0a4f0e9a3d1c2b4a5f6e7d",
    "sourceText":"s","explanation":"e","createdAt":"2026-01-01T00:00:00.5Z",
    "followUps_on_note":[]}]}})";
const QByteArray noneListed = R"({"data":{"notes":[]}})";
const QByteArray created = R"({"data":{"note_insert":{"id":"x"}}})";

struct Home {
    QTemporaryDir folder;
    FakeAuth auth;
    FakeHttpSession session;
    FakeClock clock;
    DataConnectHistory history;
    NotesStore store{folder.filePath(u"notes.json"_s)};
    FakeDefaultsStore defaults;
    NotesOwnership ownership{{defaults, auth, store}};
    NotesSyncEngine engine{store, history, auth, [this] { return ownership.allowsSync(); }};
    SyncStatus status{{engine, store, clock, ownership}};
    qsizetype served = 0;

    explicit Home(const QString &url = u"https://d.example/c"_s)
        : history(
            {auth, session, clock,
             lookupIn({{u"VELLUMO_DATACONNECT_URL"_s, url}, {u"FIREBASE_API_KEY"_s, u"k"_s}})})
    {
        own(u"u"_s);
    }

    void own(const QString &uid) { settings::notesOwner.set(defaults, uid); }
    [[nodiscard]] QString owner() const { return settings::notesOwner.value(defaults); }
    bool serve(const Result<HttpResponse, HttpError> &answer)
    {
        ++served;
        return waitUntil([&] { return session.requests.size() >= served; })
            && session.answer(answer);
    }
    bool serve(const QByteArray &body) { return serve(HttpResponse{.status = 200, .body = body}); }
    bool isQuiet()
    {
        return waitUntil([&] { return !status.isSyncing(); }) && session.requests.size() == served;
    }
};

} // namespace

class TestSyncStatus : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void explainsWhyAPullFailed()
    {
        const std::pair<Result<HttpResponse, HttpError>, Problem> rows[] = {
            {HttpError{HttpError::Kind::Refused}, Problem::Unreachable},
            {HttpError{HttpError::Kind::Untrusted}, Problem::Untrusted},
            {HttpError{HttpError::Kind::Insecure}, Problem::AddressNotAllowed},
            {HttpError{HttpError::Kind::NoAddress}, Problem::AddressNotAllowed},
            {HttpError{HttpError::Kind::TooLarge}, Problem::ListTooLarge},
            {HttpResponse{.status = 503}, Problem::Refused},
            {HttpResponse{.status = 200, .body = R"({"errors":[{"message":"no"}]})"},
             Problem::Refused},
            {HttpResponse{.status = 200, .body = "<html>"}, Problem::Unreadable},
        };
        Home home;
        for (const auto &[answer, problem] : rows) {
            home.status.syncNow();
            QVERIFY(home.status.isSyncing());
            QVERIFY(home.serve(answer) && home.isQuiet());
            QCOMPARE(home.status.problem(), problem);
            QVERIFY(home.status.problemTime().isValid());
            QVERIFY(!home.status.lastFetched().isValid());
        }
        home.status.syncNow();
        QVERIFY(home.serve(noneListed) && home.isQuiet());
        QCOMPARE(home.status.problem(), Problem::None);
        QVERIFY(home.status.lastFetched().isValid());
    }

    void explainsWhyThereIsNoToken()
    {
        using Kind = AuthError::Kind;
        const std::pair<AuthError, Problem> cases[] = {
            {{.kind = Kind::server, .status = 400}, Problem::SignedOut},
            {{.kind = Kind::server, .status = 429}, Problem::Refused},
            {{.kind = Kind::server, .status = 503}, Problem::Refused},
            {{.kind = Kind::Unreadable}, Problem::Unreadable},
            {{.kind = Kind::Network, .network = HttpError::Kind::TimedOut}, Problem::Unreachable},
            {{.kind = Kind::Network, .network = HttpError::Kind::Untrusted}, Problem::Untrusted},
            {{.kind = Kind::Network, .network = HttpError::Kind::TooLarge}, Problem::Unreadable},
        };
        for (const auto &[error, problem] : cases) {
            Home home;
            home.auth.token = error;
            home.status.pull();
            QVERIFY(home.isQuiet());
            QCOMPARE(home.status.problem(), problem);
        }
    }

    void explainsWhyANoteStays()
    {
        Home home;
        home.store.add(makeNote(u"a"_s), page);
        home.status.push();
        QVERIFY(home.serve(HttpError{HttpError::Kind::TimedOut}) && home.isQuiet());
        QCOMPARE(home.status.pending(), 1);
        QCOMPARE(home.status.problem(), Problem::Unreachable);

        // A pull that works does not upload the note.
        home.status.pull();
        QVERIFY(home.serve(noneListed) && home.isQuiet());
        QCOMPARE(home.status.problem(), Problem::Unreachable);

        home.status.push();
        QVERIFY(home.serve(created) && home.isQuiet());
        QCOMPARE(home.status.pending(), 0);
        home.store.add(makeNote(u"b"_s), page);
        home.status.push(); // running, without an error yet
        QCOMPARE(home.status.pending(), 1);
        QCOMPARE(home.status.problem(), Problem::None);
        QVERIFY(home.serve(HttpResponse{.status = 413}) && home.isQuiet());
        QCOMPARE(home.status.problem(), Problem::NoteTooLarge);
        home.status.push(); // a note that is too large is not sent again
        QVERIFY(home.isQuiet());
        QCOMPARE(home.status.problem(), Problem::NoteTooLarge);

        Home elsewhere{QString()};
        elsewhere.store.add(makeNote(u"a"_s), page);
        elsewhere.status.push();
        QVERIFY(elsewhere.isQuiet());
        QCOMPARE(elsewhere.status.problem(), Problem::AddressNotAllowed);

        elsewhere.status.forget();
        QCOMPARE(elsewhere.status.problem(), Problem::None);
    }

    void pullsDuringAPullMakeOneMore()
    {
        Home home;
        for (int i = 0; i < 4; ++i)
            home.status.pull();
        QVERIFY(home.serve(noneListed) && home.serve(noneListed) && home.isQuiet());
        QCOMPARE(home.session.requests.size(), 2);
    }

    void countsNotesOnTheirWay()
    {
        Home home;
        home.status.announceArrivals();
        QVERIFY(home.serve(oneListed) && home.isQuiet());
        QCOMPARE(home.status.arriving(), 0); // no pull was asked for

        home.status.syncNow();
        home.status.announceArrivals();
        QVERIFY(home.serve(oneListed));
        QVERIFY(waitUntil([&] { return home.status.arriving() == 1; }));
        QVERIFY(home.serve(oneListed) && home.isQuiet());
        QCOMPARE(home.status.arriving(), 0);
        QCOMPARE(home.store.noteCount(), 1);

        home.status.announceArrivals();
        QVERIFY(home.serve(oneListed) && home.isQuiet());
        QCOMPARE(home.status.arriving(), 0);
    }

    void keepsNotesFromAnotherAccount_data()
    {
        QTest::addColumn<QString>("owner");
        QTest::addColumn<bool>("hasNote");
        QTest::addColumn<bool>("isAsked");
        QTest::newRow("the same") << u"u"_s << true << false;
        QTest::newRow("another") << u"v"_s << true << true;
        QTest::newRow("the first") << QString() << true << true;
        QTest::newRow("another, nothing to send") << u"v"_s << false << false;
        QTest::newRow("the first, nothing to send") << QString() << false << false;
    }

    void keepsNotesFromAnotherAccount()
    {
        QFETCH(QString, owner);
        QFETCH(bool, hasNote);
        QFETCH(bool, isAsked);
        Home home;
        home.own(owner);
        if (hasNote)
            home.store.add(makeNote(u"a"_s), page);
        home.status.syncNow();
        if (!isAsked) {
            QVERIFY((!hasNote || home.serve(created)) && home.serve(noneListed) && home.isQuiet());
            QVERIFY(!home.ownership.isUnanswered() && !home.status.isWithheld());
            QCOMPARE(home.owner(), u"u"_s);
            return;
        }
        QVERIFY(home.isQuiet());
        QVERIFY(home.ownership.isUnanswered() && home.status.isWithheld());

        home.ownership.decline();
        home.status.syncNow();
        QVERIFY(home.isQuiet());
        QVERIFY(!home.ownership.isUnanswered() && home.status.isWithheld());
        QCOMPARE(home.status.pending(), 1);
        NotesOwnership later({home.defaults, home.auth, home.store}); // of the next run
        QVERIFY(!later.allowsSync() && later.isWithheld() && !later.isUnanswered());

        home.auth.signedIn->uid = u"w"_s; // needs a new answer
        home.status.syncNow();
        QVERIFY(home.isQuiet() && home.ownership.isUnanswered());
        home.auth.signedIn->uid = u"u"_s;
        home.status.uploadWithheld();
        QVERIFY(home.serve(created) && home.serve(noneListed) && home.isQuiet());
        QVERIFY(!home.status.isWithheld());
        QCOMPARE(home.owner(), u"u"_s);
    }
};

QTEST_GUILESS_MAIN(TestSyncStatus)
#include "test_sync_status.moc"
