// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Notes are synced between homes and a backend; each may end, fail or be unreachable at any time.

#include "backend/Backend.h"
#include "driver/Waiting.h"
#include "notes/NotesStore.h"
#include "platform/qt/QtHttpSession.h"
#include "platform/qt/SystemClock.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncFakes.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Fault = Backend::Fault;
using FollowUps = QMap<QString, QStringList>; ///< questions by the note's id, 32 digits

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};

/// A home in this process.
struct Home {
    Home(const QString &file, const Backend &backend, const QString &token)
        : history({auth, session, clock, lookupIn(backend.environment())})
        , store(file)
    {
        auth.token = std::optional(token);
    }

    [[nodiscard]] bool sync()
    {
        bool isDone = false;
        engine.pushPending(&engine,
                           [&] { engine.pullAndMerge(&engine, [&isDone] { isDone = true; }); });
        return waitUntil([&isDone] { return isDone; }, 60s);
    }

    [[nodiscard]] FollowUps followUps() const
    {
        FollowUps found;
        const QList<ReadingNote> notes = store.allNotes();
        for (const ReadingNote &note : notes) {
            QStringList &questions = found[note.id.toString(QUuid::Id128)];
            for (const FollowUpExchange &exchange : note.followUps)
                questions.append(exchange.question);
        }
        return found;
    }

    FakeAuth auth;
    QtHttpSession session;
    SystemClock clock;
    DataConnectHistory history;
    NotesStore store;
    NotesSyncEngine engine{store, history, auth};
};

/// Returns what the backend has, each question where it came first.
FollowUps onServer(Backend &backend, const QString &uid)
{
    FollowUps found;
    const QJsonArray notes = backend.tables().notes(uid);
    for (const QJsonValue &note : notes) {
        QStringList &questions = found[note["id"_L1].toString()];
        const QJsonArray followUps = note["followUps_on_note"_L1].toArray();
        for (const QJsonValue &followUp : followUps)
            questions.append(followUp["question"_L1].toString());
        questions.removeDuplicates();
    }
    return found;
}

/// Returns the differences between the two.
QStringList difference(const FollowUps &server, const FollowUps &home)
{
    QStringList found;
    const QStringList ids = server.keys() + home.keys();
    for (const QString &id : ids) {
        if (server.value(id) != home.value(id) || server.contains(id) != home.contains(id))
            found.append(u"server (%1), home (%2)"_s.arg(server.value(id).join(u' '),
                                                         home.value(id).join(u' ')));
    }
    found.removeDuplicates();
    return found;
}

QStringList texts(const Home &home)
{
    QStringList found;
    const QList<ReadingNote> notes = home.store.allNotes();
    for (const ReadingNote &note : notes)
        found.append(note.sourceText);
    found.sort();
    return found;
}

} // namespace

class TestSyncFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        backend_ = std::make_unique<Backend>(file(u"backend.sqlite"_s));
        uid_ = backend_->tables().uidOf(u"reader@example.org"_s);
        token_ = backend_->tables().newIdToken(uid_, 1h);
    }

    void nothingIsLostWhenTheProgramIsKilled()
    {
        constexpr int wanted = 100;
        const QString path = file(u"notes.json"_s);
        const quint32 seed = QRandomGenerator::global()->generate();
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        FollowUps saved; // as a run has printed last for each note
        int kills = 0;
        QMap<QString, int> killsAt;
        for (int run = 0; kills < wanted; ++run) {
            QVERIFY(run < 3 * wanted);
            QProcess home;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            for (const auto &[name, value] : backend_->environment())
                environment.insert(name, value);
            home.setProcessEnvironment(environment);
            // One in four is killed a while after its start, the others at some step of the backend
            // or a moment after it has answered.
            static const QStringList operations{u"start"_s, u"CreateNote"_s, u"AddFollowUp"_s,
                                                u"ListNotes"_s};
            const QString at = operations.at(run % 4);
            const auto step =
                random.bounded(2) == 0 ? Backend::Step::Received : Backend::Step::Stored;
            const std::chrono::milliseconds pause(random.bounded(4));
            int left = at == "ListNotes"_L1 ? 1 : random.bounded(1, 4);
            const auto kill = [&home] {
                if (home.state() != QProcess::NotRunning)
                    home.kill();
            };
            backend_->onStep = [&](const QString &operation, Backend::Step reached) {
                if (operation != at || reached != step || --left != 0)
                    return;
                if (pause == 0ms)
                    kill();
                else
                    QTimer::singleShot(pause, &home, kill);
            };
            home.start(QStringLiteral(VELLUMO_SYNC_HOME), {path, token_, u"run%1"_s.arg(run)});
            QVERIFY(home.waitForStarted());
            if (at == "start"_L1)
                QTimer::singleShot(random.bounded(40), &home, kill);
            QVERIFY(waitUntil([&home] { return home.state() == QProcess::NotRunning; }, 60s));
            backend_->onStep = {};
            if (home.exitStatus() == QProcess::CrashExit) {
                ++kills;
                ++killsAt[at];
            } else {
                QCOMPARE(home.exitCode(), 0);
            }
            const QStringList lines =
                QString::fromLatin1(home.readAllStandardOutput()).split(u'\n');
            for (const QString &line : lines) {
                QStringList words = line.split(u' ');
                if (words.takeFirst() == "saved"_L1) {
                    const QString id = words.takeFirst().remove(u'-').toLower();
                    saved.insert(id, words);
                }
            }
        }
        for (auto where = killsAt.cbegin(); where != killsAt.cend(); ++where)
            qInfo("killed %d times: at %s", where.value(), qPrintable(where.key()));

        Home home(path, *backend_, token_);
        QVERIFY(home.sync());
        const FollowUps kept = home.followUps();
        for (auto note = saved.cbegin(); note != saved.cend(); ++note) {
            // a run may have ended between saving and printing
            const QStringList questions = kept.value(note.key(), {u"lost"_s});
            QCOMPARE(questions.first(note->size()), note.value());
        }
        QVERIFY(home.store.pendingSync().isEmpty());
        QCOMPARE(difference(onServer(*backend_, uid_), kept), QStringList());
        QCOMPARE(backend_->complaints(), QStringList());
    }

    void everyFaultIsMadeGood_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::newRow("offline") << Fault::Offline;
        QTest::newRow("slow") << Fault::Slow;
        QTest::newRow("500") << Fault::ServerError;
        QTest::newRow("errors") << Fault::GraphqlErrors;
        QTest::newRow("token expired") << Fault::TokenExpired;
        QTest::newRow("cut after storing") << Fault::CutAfterStoring;
        QTest::newRow("half an answer") << Fault::Malformed;
    }

    void everyFaultIsMadeGood()
    {
        QFETCH(Fault, fault);
        Home home(file(u"notes.json"_s), *backend_, token_);
        Home other(file(u"other.json"_s), *backend_, token_);
        other.store.add(makeNote(u"from elsewhere"_s, 1), page);
        QVERIFY(other.sync());
        for (int i = 0; i < 3; ++i)
            home.store.add(makeNote(QString::number(i), i), page);
        const FollowUps before = home.followUps();

        backend_->slowness = 50ms;
        backend_->fail(fault);
        QVERIFY(home.sync());
        if (fault != Fault::Slow)
            QCOMPARE(home.followUps(), before);
        backend_->fail(Fault::None);
        QVERIFY(home.sync());
        QVERIFY(home.store.pendingSync().isEmpty());
        QCOMPARE(home.followUps().size(), before.size() + 1);
        QCOMPARE(difference(onServer(*backend_, uid_), home.followUps()), QStringList());
        QCOMPARE(backend_->complaints(), QStringList());
    }

    void aBackendThatWasAwayGetsEverything()
    {
        const quint16 port = backend_->port();
        Home home(file(u"notes.json"_s), *backend_, token_);
        home.store.add(makeNote(u"before"_s, 1), page);
        QVERIFY(home.sync());
        backend_.reset();
        for (int i = 0; i < 20; ++i) {
            home.store.add(makeNote(QString::number(i), 1), page);
            home.engine.pushPending();
            QCoreApplication::processEvents();
        }
        QVERIFY(home.sync());
        backend_ = std::make_unique<Backend>(file(u"backend.sqlite"_s), port);
        // a pass that found no backend may still be running
        QVERIFY(
            waitUntil([&home] { return home.sync() && home.store.pendingSync().isEmpty(); }, 60s));
        QCOMPARE(home.followUps().size(), 21);
        QCOMPARE(difference(onServer(*backend_, uid_), home.followUps()), QStringList());
    }

    void twoHomesEndWithTheUnion()
    {
        Home here(file(u"here.json"_s), *backend_, token_);
        Home there(file(u"there.json"_s), *backend_, token_);
        QStringList all;
        for (int i = 0; i < 6; ++i) {
            Home &home = i % 2 == 0 ? here : there;
            all.append({u"%1 first"_s.arg(i), u"%1 second"_s.arg(i)});
            home.store.add(makeNote(all.at(2 * i), i), page);
            home.store.add(makeNote(all.at((2 * i) + 1)), page);
            QVERIFY(home.sync());
        }
        QVERIFY(here.sync());
        QVERIFY(there.sync());
        QCOMPARE(texts(here), all);
        QCOMPARE(texts(there), all);
        QCOMPARE(here.followUps(), there.followUps());
        QCOMPARE(difference(onServer(*backend_, uid_), here.followUps()), QStringList());
        // another account has none of them
        Home stranger(file(u"stranger.json"_s), *backend_,
                      backend_->tables().newIdToken(u"stranger"_s, 1h));
        QVERIFY(stranger.sync());
        QCOMPARE(stranger.store.noteCount(), 0);
    }

    void longListsAreTaken()
    {
        constexpr int count = 5000;
        for (int i = 0; i < count; ++i) {
            const QString text = u"潮水每天涨落两次 %1 "_s.arg(i) + QString(2000, u'x');
            backend_->tables().createNote(
                uid_,
                {{u"id"_s, QUuid::createUuid().toString(QUuid::WithoutBraces)},
                 {u"sourceText"_s, text},
                 {u"translation"_s, u"t"_s},
                 {u"explanation"_s, u"e"_s}});
        }
        Home home(file(u"notes.json"_s), *backend_, token_);
        QVERIFY(home.sync());
        QCOMPARE(home.store.noteCount(), count);
        QCOMPARE(NotesStore(file(u"notes.json"_s)).noteCount(), count);
    }

private:
    [[nodiscard]] QString file(const QString &name) const { return folder_->filePath(name); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<Backend> backend_;
    QString uid_;
    QString token_;
};

QTEST_GUILESS_MAIN(TestSyncFaults)
#include "test_sync_faults.moc"
