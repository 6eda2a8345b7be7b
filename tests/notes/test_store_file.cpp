// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StoreFile.h"
#include "notes/StoreMerge.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

// One note with a follow-up, as the store writes it.
QByteArray readValidFile()
{
    QFile file(QStringLiteral(VELLUMO_TEST_DATA "/notes.json"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const ReadingContext page{u"p"_s, u"page"_s, ReadingContextSource::webURL};
const ReadingContext cloud{cloudKey, u"Synced"_s, ReadingContextSource::appWindow};

/// Makes a note with a follow-up for each letter, which is its question.
ReadingNote noteAsked(const QUuid &id, const QString &letters)
{
    ReadingNote note{id, u"s"_s, {}, u"e"_s, 1, {}};
    for (const QChar letter : letters)
        note.followUps.append({QUuid::createUuid(), letter, u"a"_s});
    return note;
}

QString lettersOf(const ReadingNote &note)
{
    QString letters;
    for (const FollowUpExchange &exchange : note.followUps)
        letters.append(exchange.question);
    return letters;
}

} // namespace

class TestStoreFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(!validFile.isEmpty()); }

    void writesExactlyWhatItReads()
    {
        const auto file = StoreFile::fromJson(validFile);
        QVERIFY(file);
        QCOMPARE(file->buckets.size(), 1);
        const ReadingNote &note = file->buckets[0].notes.at(0);
        QCOMPARE(note.createdAt, 788918400.25);
        QCOMPARE(note.followUps.at(0).answer, u"😀"_s);
        QCOMPARE(file->toJson(), validFile);
    }

    void loneSurrogateKeepsTheFileReadable()
    {
        auto file = StoreFile::fromJson(validFile);
        file->buckets[0].notes[0] = {
            QUuid::createUuid(), u"a"_s + QChar(0xD800) + u"b"_s + QChar(u'\0'), {}, {}, 0, {}};
        const auto again = StoreFile::fromJson(file->toJson());
        QVERIFY(again);
        QCOMPARE(again->buckets[0].notes[0].sourceText, u"a?b"_s + QChar(u'\0'));
    }

    void rejects_data()
    {
        QTest::addColumn<QByteArray>("json");
        const auto row = [this](const char *name, const char *what, const char *with) {
            QByteArray json = validFile;
            json.replace(what, with);
            QVERIFY2(json != validFile, name);
            QTest::newRow(name) << json;
        };
        row("missing followUps", "\"followUps\"", "\"others\"");
        row("missing buckets", "\"buckets\"", "\"others\"");
        row("missing created", "\"created\"", "\"others\"");
        row("null follow-ups", "\"created\": true", "\"created\": null");
        row("created as a number", "\"created\": true", "\"created\": 1");
        row("count with a fraction", "\"syncedFollowUpCount\": 1", "\"syncedFollowUpCount\": 1.5");
        row("text as a number", "\"sourceText\": \"s\"", "\"sourceText\": 5");
        row("unknown source", "\"webURL\"", "\"web\"");
        row("braced id", "\"6F9619FF-8B86-D011-B42D-00C04FC964FF\",",
            "\"{6F9619FF-8B86-D011-B42D-00C04FC964FF}\",");
        row("id with a tail", "964FF\",", "964FF0\",");
        row("id with a stray letter", "\"6F9619FF-8B86-D011-B42D-00C04FC964FF\",",
            "\"6G9619FF-8B86-D011-B42D-00C04FC964FF\",");
        row("invalid UTF-8", "why?", "why\xFF?");
        QTest::newRow("sync states as an array")
            << QByteArray(R"({"buckets": [], "syncStates": []})");
        QTest::newRow("trailing bytes") << QByteArray(validFile + "x");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("number of many zeros") << QByteArray("0." + QByteArray(700, '0'));
    }

    void rejects()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!StoreFile::fromJson(json));
        QVERIFY(!StoreFile::bucketsFromOlderLayout(json));
    }

    void rejectsEveryTruncation()
    {
        for (qsizetype length = 0; length < validFile.size(); ++length) {
            QVERIFY2(!StoreFile::fromJson(validFile.left(length)),
                     qPrintable(QString::number(length)));
        }
    }

    void accepts()
    {
        const std::pair<QByteArray, bool> rows[] = {
            {R"({"buckets": []})", false},
            {R"({"buckets": [], "syncStates": null})", false},
            {R"({"x": [{}], "syncStates": {}, "buckets": []})", true},
            {QByteArray(validFile).replace("6F9619FF", "6f9619ff"), true},
        };
        for (const auto &[json, hasStates] : rows) {
            const auto file = StoreFile::fromJson(json);
            QVERIFY2(file, json);
            QCOMPARE(file->syncStates.has_value(), hasStates);
        }
    }

    void deepNestingIsRejectedWithoutCrash()
    {
        QVERIFY(!StoreFile::fromJson(QByteArray(2'000'000, '[')));
        const QByteArray closed =
            "{\"buckets\": " + QByteArray(200'000, '[') + QByteArray(200'000, ']') + "}";
        QVERIFY(!StoreFile::fromJson(closed));
    }

    void mergeLosesNothing_data()
    {
        // the questions, and how many the server has; -1: not even the note
        QTest::addColumn<QString>("ours");
        QTest::addColumn<int>("sentByOurs");
        QTest::addColumn<QString>("theirs");
        QTest::addColumn<int>("sentByTheirs");
        QTest::addColumn<QString>("merged");
        QTest::addColumn<int>("sent");
        QTest::newRow("equal") << u"ab"_s << 1 << u"ab"_s << 1 << u"ab"_s << 1;
        QTest::newRow("an older copy") << u"abc"_s << 3 << u"a"_s << -1 << u"abc"_s << 3;
        QTest::newRow("asked elsewhere") << u"a"_s << 1 << u"abc"_s << 2 << u"abc"_s << 2;
        QTest::newRow("asked on both sides") << u"ab"_s << 2 << u"acd"_s << 1 << u"acdb"_s << 1;
        QTest::newRow("as many on both sides") << u"ab"_s << 0 << u"ac"_s << 2 << u"abc"_s << 1;
        QTest::newRow("the same asked twice") << u"aa"_s << 2 << u"a"_s << 1 << u"aa"_s << 2;
        QTest::newRow("sent by neither") << u"a"_s << -1 << u"ab"_s << -1 << u"ab"_s << -1;
        QTest::newRow("sent by them alone") << u"a"_s << -1 << u"a"_s << 1 << u"a"_s << 1;
    }

    void mergeLosesNothing()
    {
        QFETCH(QString, ours);
        QFETCH(int, sentByOurs);
        QFETCH(QString, theirs);
        QFETCH(int, sentByTheirs);
        const auto state = [](int sent) { return NoteSyncState{sent >= 0, std::max(sent, 0)}; };
        const ReadingNote note = noteAsked(QUuid::createUuid(), ours);
        const QString id = noteIdText(note.id);
        QHash<QString, StoredNotesBucket> buckets{{page.key, {page, {note}}}};
        NoteSyncStates states{{id, state(sentByOurs)}};
        const StoreFile file{{{page, {noteAsked(note.id, theirs)}}},
                             NoteSyncStates{{id, state(sentByTheirs)}}};
        const bool hasChanged = !mergeStoreFile(buckets, states, file).isEmpty();
        const ReadingNote &merged = buckets[page.key].notes.constFirst();
        QTEST(lettersOf(merged), "merged");
        QFETCH(int, sent);
        QCOMPARE(states.value(id), state(sent));
        QCOMPARE(hasChanged, lettersOf(merged) != ours);
    }

    void mergeKeepsNotesInOnePlace()
    {
        const ReadingNote a = noteAsked(QUuid::createUuid(), {});
        const ReadingNote b = noteAsked(QUuid::createUuid(), {});
        const ReadingNote c = noteAsked(QUuid::createUuid(), {});
        const ReadingNote d = noteAsked(QUuid::createUuid(), {});
        QHash<QString, StoredNotesBucket> buckets{{page.key, {page, {a}}},
                                                  {cloudKey, {cloud, {b, c}}}};
        NoteSyncStates states{{noteIdText(b.id), {true, 0}}, {noteIdText(c.id), {true, 0}}};
        const ReadingContext renamed{page.key, u"another name"_s, page.source};
        const StoreFile file{{{cloud, {a, c}}, {renamed, {b, d}}}, {}};
        QCOMPARE(mergeStoreFile(buckets, states, file), (QSet<QString>{page.key, cloudKey}));
        QCOMPARE(buckets[page.key].context, page);
        QCOMPARE(buckets[page.key].notes, (QList{a, b, d}));
        QCOMPARE(buckets[cloudKey].notes, QList{c});
        QVERIFY(states.value(noteIdText(b.id)).created && !states.contains(noteIdText(d.id)));
        QVERIFY(
            mergeStoreFile(buckets, states, file).isEmpty()); // nothing is left to be taken over
    }

private:
    const QByteArray validFile = readValidFile();
};

QTEST_GUILESS_MAIN(TestStoreFile)
#include "test_store_file.moc"
