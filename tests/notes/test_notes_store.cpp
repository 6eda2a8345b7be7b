// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/NotesStore.h"
#include "notes/OpenNote.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

QStringList diskCalls; ///< records the calls below

} // namespace

// Replace the system's functions, since a test cannot see otherwise what has reached the disk.
extern "C" int fsync(int descriptor)
{
    struct stat state { };
    ::fstat(descriptor, &state);
    diskCalls.append(S_ISDIR(state.st_mode) ? u"sync folder"_s : u"sync file"_s);
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    diskCalls.append(u"rename"_s);
    return ::renameat(AT_FDCWD, from, AT_FDCWD, to);
}

namespace {

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};

ReadingNote makeNote(const QString &text, double createdAt, int followUps = 0)
{
    ReadingNote note{QUuid::createUuid(), text, u"t"_s, u"e "_s + text, createdAt, {}};
    for (int i = 0; i < followUps; ++i) {
        note.followUps.append({QUuid::createUuid(), u"q"_s, u"a"_s});
    }
    return note;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray noteJson(const QString &id)
{
    return R"({"createdAt": 1, "explanation": "e", "followUps": [], "id": ")" + id.toLatin1()
        + R"(", "sourceText": "s", "translation": "t"})";
}

} // namespace

class TestNotesStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void notesSurviveARestart()
    {
        const ReadingNote note = makeNote(u"多行\n文字 😀"_s, 788918400.25, 2);
        {
            NotesStore store(path());
            QSignalSpy changes(&store, &NotesStoring::vellumoNotesDidChange);
            store.add(note, page);
            QCOMPARE(changes.count(), 1);
        }
        const NotesStore store(path());
        const auto notes = store.allNotesWithContexts();
        QCOMPARE(notes.size(), 1);
        QCOMPARE(notes[0].note, note);
        QCOMPARE(notes[0].context, page);
    }

    void listsAreNewestFirst()
    {
        NotesStore store(path());
        store.add(makeNote(u"old"_s, -5), page);
        store.add(makeNote(u"new"_s, 10.5), {u"x"_s, u"x"_s, ReadingContextSource::appWindow});
        store.add(makeNote(u"middle"_s, 10.25), {page.key, u"another name"_s, page.source});
        QStringList texts;
        for (const ReadingNote &note : store.allNotes()) {
            texts.append(note.sourceText);
        }
        QCOMPARE(texts, (QStringList{u"new"_s, u"middle"_s, u"old"_s}));
        QCOMPARE(store.allNotesWithContexts().at(1).context, page); // a place keeps its first name
    }

    void updateReplacesOnlyWhatExists()
    {
        NotesStore store(path());
        ReadingNote note = makeNote(u"1"_s, 1);
        store.add(note, page);
        const QByteArray before = contentOf(path());
        QSignalSpy changes(&store, &NotesStoring::vellumoNotesDidChange);

        note.followUps.append({QUuid::createUuid(), u"q"_s, u"a"_s});
        store.update(note, {u"unknown"_s, {}, {}});
        store.update(makeNote(u"stranger"_s, 1), page);
        QCOMPARE(changes.count(), 0);
        QCOMPARE(contentOf(path()), before);

        store.update(note, page);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(store.allNotes(), QList{note});
    }

    void syncBookkeeping()
    {
        NotesStore store(path());
        ReadingNote note = makeNote(u"1"_s, 1, 1);
        store.add(note, page);
        QCOMPARE(store.pendingSync().size(), 1);
        QCOMPARE(store.pendingSync()[0].state, (NoteSyncState{false, 0}));

        QSignalSpy changes(&store, &NotesStoring::vellumoNotesDidChange);
        store.markSynced(note.id, 1);
        QCOMPARE(changes.count(), 0);
        QVERIFY(store.pendingSync().isEmpty());
        QVERIFY(!NotesStore(path()).pendingSync().isEmpty());
        QTRY_VERIFY(NotesStore(path()).pendingSync().isEmpty()); // by itself

        note.followUps.append({QUuid::createUuid(), u"q"_s, u"a"_s});
        store.update(note, page);
        QCOMPARE(store.pendingSync().size(), 1);
        QCOMPARE(store.pendingSync()[0].state, (NoteSyncState{true, 1}));
    }

    void olderLayoutCountsAsSynced()
    {
        const QByteArray older =
            R"([{"context": {"key": "k", "displayName": "d", "source": "filePath"}, "notes": [)"
            + noteJson(u"6f9619ff-8b86-d011-b42d-00c04fc964ff"_s) + "]}]";
        writeFile("{\"buckets\": " + older + '}'); // the present layout without states
        QCOMPARE(NotesStore(path()).pendingSync().value(0).state, (NoteSyncState{false, 0}));
        QCOMPARE(NotesStore(path()).pendingSync().size(), 1);
        writeFile(older);
        NotesStore store(path());
        QCOMPARE(store.allNotes().size(), 1);
        QVERIFY(store.pendingSync().isEmpty());
        QCOMPARE(contentOf(path()), older); // nothing is written back by loading

        store.add(makeNote(u"new"_s, 5), page);
        QVERIFY(contentOf(path()).contains("\"6F9619FF-8B86-D011-B42D-00C04FC964FF\": {"));
        QCOMPARE(store.pendingSync().size(), 1);
    }

    void mergeTakesOnlyTheUnknown()
    {
        NotesStore store(path());
        const ReadingNote local = makeNote(u"local"_s, 1);
        store.add(local, page);
        const QByteArray before = contentOf(path());
        QSignalSpy changes(&store, &NotesStoring::vellumoNotesDidChange);

        ReadingNote sameId = makeNote(u"other text"_s, 2);
        sameId.id = local.id;
        ReadingNote sameContent = local;
        sameContent.id = QUuid::createUuid();
        store.mergeRemote({});
        store.mergeRemote({sameId, sameContent});
        QCOMPARE(changes.count(), 0);
        QCOMPARE(contentOf(path()), before);

        const ReadingNote first = makeNote(u"remote"_s, 3, 2);
        ReadingNote twin = first;
        twin.id = QUuid::createUuid();
        store.mergeRemote({first, sameId, twin, first});
        QCOMPARE(changes.count(), 1);
        const auto notes = store.allNotesWithContexts();
        QCOMPARE(notes.size(), 3);
        QCOMPARE(notes[0].context,
                 (ReadingContext{u"cloud"_s, u"Synced"_s, ReadingContextSource::appWindow}));
        QCOMPARE(store.pendingSync().size(), 1); // the local one only
    }

    void deletedNotesStayAway()
    {
        const ReadingNote kept = makeNote(u"kept"_s, 1);
        const ReadingNote first = makeNote(u"first"_s, 2, 1);
        const ReadingNote second = makeNote(u"second"_s, 3);
        const ReadingContext other{u"x"_s, u"X"_s, ReadingContextSource::appWindow};
        auto store = std::make_unique<NotesStore>(path());
        store->add(kept, page);
        store->add(first, page);
        store->add(second, other);
        store->markSynced(first.id, 1);
        QSignalSpy changes(store.get(), &NotesStoring::vellumoNotesDidChange);

        QVERIFY(store->remove({QUuid::createUuid()}).isEmpty());
        QCOMPARE(changes.count(), 0);
        const QByteArray copy = contentOf(path()); // has all three
        const auto deleted = store->remove({first.id, second.id});
        QCOMPARE(deleted.size(), 2);
        QCOMPARE(changes.count(), 1);
        store->markSynced(first.id, 1); // was on its way
        QVERIFY(QFile::remove(path()));
        writeFile(copy); // another program brings it
        ReadingNote fetched = second;
        fetched.sourceText = u"changed"_s;
        store->mergeRemote({first, fetched});
        QCOMPARE(store->unknownCount({first, fetched}), 0);
        store->update(kept, page);
        QCOMPARE(store->allNotes(), QList{kept});

        store = std::make_unique<NotesStore>(path());
        QCOMPARE(store->allNotes(), QList{kept});
        store->mergeRemote({first, fetched});
        QCOMPARE(store->noteCount(), 1);

        store->restore(deleted);
        store->restore(deleted);
        store = std::make_unique<NotesStore>(path());
        QCOMPARE(store->allNotes(), (QList{second, first, kept}));
        QCOMPARE(store->allNotesWithContexts().constFirst().context, other);
        QCOMPARE(store->pendingSync().size(), 2); // the first one is on the server
        QVERIFY(!store->isDeleted(first.id));

        // a copy that is put in place while vellumo does not run is what the user wants
        store->remove({first.id});
        store.reset();
        QVERIFY(QFile::remove(path()));
        writeFile(copy);
        store = std::make_unique<NotesStore>(path());
        QCOMPARE(store->noteCount(), 3);
        QVERIFY(!store->isDeleted(first.id));
    }

    void unsavedDeletionIsRepeated()
    {
        NotesStore store(path());
        const ReadingNote note = makeNote(u"1"_s, 1);
        store.add(note, page);
        const QString list = QFileInfo(path()).path() + u"/deleted-notes"_s;
        QVERIFY(QDir().mkpath(list)); // cannot be replaced
        store.remove({note.id});
        QVERIFY(store.saveFailure());
        QCOMPARE(NotesStore(path()).noteCount(), 0);
        QVERIFY(QDir().rmdir(list));
        store.retrySave();
        QVERIFY(!store.saveFailure());
        QVERIFY(NotesStore(path()).isDeleted(note.id));
    }

    void unreadableFileIsSetAside_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("garbage") << QByteArray("no json");
        QTest::newRow("empty") << QByteArray();
    }

    void unreadableFileIsSetAside()
    {
        QFETCH(QByteArray, content);
        writeFile(content);
        NotesStore store(path());
        QVERIFY(store.allNotes().isEmpty());
        QCOMPARE(contentOf(path()), content);
        QCOMPARE(store.unreadableFiles(), QStringList{path()});

        store.add(makeNote(u"1"_s, 1), page);
        store.add(makeNote(u"2"_s, 2), page);
        QCOMPARE(NotesStore(path()).allNotes().size(), 2);
        const QDir directory(directory_->filePath(u"vellumo"_s));
        const QStringList kept = directory.entryList({u"notes.json.unreadable-*"_s}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QCOMPARE(contentOf(directory.filePath(kept[0])), content);
        QCOMPARE(NotesStore(path()).unreadableFiles(), QStringList{directory.filePath(kept[0])});
    }

    void unreadableFileThatCannotBeSetAsideStays()
    {
        const QString longName =
            directory_->filePath(QString(240, u'n')); // leaves no room for a suffix
        QFile file(longName);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no json") == 7);
        file.close();
        NotesStore store(longName);
        store.add(makeNote(u"new"_s, 1), page);
        QVERIFY(store.saveFailure());
        QCOMPARE(contentOf(longName), "no json");
    }

    void duplicateKeysEndTheProcess()
    {
        const QByteArray bucket =
            R"({"context": {"key": "twin", "displayName": "d", "source": "filePath"}, "notes": []})";
        writeFile("{\"buckets\": [" + bucket + "," + bucket + "]}");
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--load"_s, path()});
        QVERIFY(child.waitForFinished());
        QVERIFY(child.exitCode() != 0);
        const QByteArray output = child.readAllStandardOutput();
        QVERIFY2(output.startsWith("vellumo: ") && !output.contains("twin\"")
                     && output.contains(path().toUtf8()),
                 output.constData());
    }

    void outsideChangesAreKept_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: another note, as another store writes it
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("isSetAside");
        const QByteArray bucket =
            R"({"context": {"key": "k", "displayName": "d", "source": "filePath"}, "notes": []})";
        QTest::newRow("before a note") << QByteArray() << u"add"_s << false;
        QTest::newRow("before bookkeeping") << QByteArray() << u"mark"_s << false;
        QTest::newRow("before the end") << QByteArray() << u"end"_s << false;
        QTest::newRow("garbage") << QByteArray("no json") << u"add"_s << true;
        QTest::newRow("two buckets with one key")
            << QByteArray("{\"buckets\": [" + bucket + "," + bucket + "]}") << u"add"_s << true;
    }

    void outsideChangesAreKept()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, change);
        QFETCH(bool, isSetAside);
        const ReadingNote ours = makeNote(u"ours"_s, 1);
        auto store = std::make_unique<NotesStore>(path());
        store->add(ours, page);
        QVERIFY(QFile::remove(path()));
        if (content.isEmpty()) {
            NotesStore(path()).add(makeNote(u"theirs"_s, 2), page);
        } else {
            writeFile(content);
        }

        QSignalSpy changes(store.get(), &NotesStoring::vellumoNotesDidChange);
        if (change == "add"_L1) {
            store->add(makeNote(u"another"_s, 3), page);
        } else {
            store->markSynced(ours.id, 0);
            if (change == "end"_L1) {
                store.reset();
            } else {
                QTRY_COMPARE(changes.count(), 1);
            }
        }
        const NotesStore again(path());
        const bool isAdded = change == "add"_L1;
        const qsizetype count = isAdded && content.isEmpty() ? 3 : 2;
        QCOMPARE(again.noteCount(), count);
        QCOMPARE(again.pendingSync().size(), isAdded ? count : count - 1);
        QCOMPARE(!again.unreadableFiles().isEmpty(), isSetAside);
        if (store) {
            QCOMPARE(store->noteCount(), count);
        }
    }

    void failedSaveKeepsFileAndMemory_data()
    {
        QTest::addColumn<bool>("diskFull");
        QTest::newRow("disk full") << true;
        QTest::newRow("folder is a file") << false;
    }

    void failedSaveKeepsFileAndMemory()
    {
        QFETCH(bool, diskFull);
        const QString store1 = diskFull ? path() : directory_->filePath(u"vellumo/x/notes.json"_s);
        if (!diskFull) {
            writeFile("not a store");
            QVERIFY(QFile::rename(path(), directory_->filePath(u"vellumo/x"_s)));
        }
        auto kept = std::make_unique<NotesStore>(store1);
        NotesStore &store = *kept;
        if (diskFull) {
            store.add(makeNote(u"first"_s, 1), page);
        }
        const QByteArray before = contentOf(store1);

        rlimit unlimited{};
        getrlimit(RLIMIT_FSIZE, &unlimited);
        const auto previous = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{200, unlimited.rlim_max};
        if (diskFull) {
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        }
        store.add(makeNote(u"second"_s, 2), page);
        setrlimit(RLIMIT_FSIZE, &unlimited);
        std::signal(SIGXFSZ, previous);

        QCOMPARE(contentOf(store1), before);
        QCOMPARE(store.allNotes().constFirst().sourceText, u"second"_s);
        if (diskFull) {
            QCOMPARE(QDir(directory_->filePath(u"vellumo"_s)).entryList(QDir::Files | QDir::Hidden),
                     QStringList{u"notes.json"_s});
            store.retrySave();
            QVERIFY(!store.saveFailure());
            QCOMPARE(NotesStore(store1).allNotes().size(), 2);
            return;
        }
        QVERIFY(QFile::remove(directory_->filePath(u"vellumo/x"_s)));
        kept.reset();
        QCOMPARE(NotesStore(store1).allNotes().size(), 1); // the end of the store saves as well
    }

    void dataIsOnTheDiskBeforeItHasTheName()
    {
        const ReadingNote note = makeNote(u"1"_s, 1);
        {
            NotesStore store(path());
            diskCalls.clear();
            store.add(note, page);
            QCOMPARE(diskCalls, (QStringList{u"sync file"_s, u"rename"_s, u"sync folder"_s}));
            store.markSynced(note.id, 0);
            diskCalls.clear();
        }
        QCOMPARE(diskCalls, (QStringList{u"sync file"_s, u"rename"_s}));
        QVERIFY(NotesStore(path()).pendingSync().isEmpty());
    }

    void fileIsPrivate()
    {
        NotesStore store(path());
        store.add(makeNote(u"1"_s, 1), page);
        const auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner
            | QFileDevice::ReadUser | QFileDevice::WriteUser;
        QCOMPARE(QFileInfo(path()).permissions(), ownerOnly);
        QCOMPARE(QFileInfo(directory_->filePath(u"vellumo"_s)).permissions(),
                 ownerOnly | QFileDevice::ExeOwner | QFileDevice::ExeUser);
    }

    void symbolicLinkIsFollowed()
    {
        writeFile(R"({"buckets": []})");
        const QString elsewhere = directory_->filePath(u"elsewhere.json"_s);
        QVERIFY(QFile::rename(path(), elsewhere));
        QVERIFY(QFile::link(elsewhere, path()));
        NotesStore store(path());
        store.add(makeNote(u"1"_s, 1), page);
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(NotesStore(elsewhere).allNotes().size(), 1);
    }

    void openNoteOutlivesItsProgram_data()
    {
        QTest::addColumn<int>("stored"); // follow-ups in the store; negative without the note
        QTest::addColumn<int>("expected"); // negative without the note
        QTest::newRow("unknown") << -1 << 2;
        QTest::newRow("known with fewer") << 1 << 2;
        QTest::newRow("known with more") << 3 << 3;
        QTest::newRow("deleted") << -2 << -1;
    }

    void openNoteOutlivesItsProgram()
    {
        QFETCH(int, stored);
        QFETCH(int, expected);
        ReadingNote note = makeNote(u"open"_s, 5, 2);
        const QString folder = QFileInfo(path()).path();
        {
            OpenNote open(folder);
            open.keep({makeNote(u"earlier"_s, 4), page});
            open.keep({note, page});
            open.drop(QUuid::createUuid()); // an earlier panel closes late
        }
        NotesStore store(path());
        if (stored >= 0) {
            ReadingNote known = note;
            known.followUps = makeNote({}, 0, stored).followUps;
            store.add(known, page);
        } else if (stored == -2) {
            store.add(note, page);
            store.remove({note.id});
        }
        OpenNote open(folder);
        open.recover(store);
        if (expected < 0) {
            QCOMPARE(store.noteCount(), 0);
            return;
        }
        QCOMPARE(store.noteCount(), 1);
        QCOMPARE(store.allNotes().constFirst().id, note.id);
        QCOMPARE(store.allNotes().constFirst().followUps.size(), expected);
        QCOMPARE(NotesStore(path()).noteCount(), 1);
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{u"notes.json"_s});

        note = makeNote(u"closed"_s, 6);
        {
            OpenNote last(folder);
            last.keep({note, page});
            last.drop(note.id);
        }
        open.recover(store);
        QCOMPARE(store.noteCount(), 1);
    }

private:
    [[nodiscard]] QString path() const { return directory_->filePath(u"vellumo/notes.json"_s); }

    void writeFile(const QByteArray &content) const
    {
        QDir().mkpath(directory_->filePath(u"vellumo"_s));
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    std::unique_ptr<QTemporaryDir> directory_;
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--load") == 0) {
        const NotesStore store(QString::fromLocal8Bit(argv[2]));
        return 0;
    }
    TestNotesStore test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_notes_store.moc"
