// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Exported notes. A file is written as a whole or not at all.

#include "driver/Waiting.h"
#include "export/CsvNotes.h"
#include "export/JsonNotes.h"
#include "export/MarkdownNotes.h"
#include "export/NotesExport.h"
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

constexpr double eveningOfTheDay = 817066800; // 2026-11-22 19:00 UTC

NoteWithContext noteOf(const QString &source, const QString &explanation = u"meaning"_s)
{
    NoteWithContext entry;
    entry.note = {QUuid(u"00000000-0000-4000-8000-00000000000a"_s),
                  source,
                  u"Übersetzung"_s,
                  explanation,
                  eveningOfTheDay,
                  {{QUuid(u"00000000-0000-4000-8000-00000000000b"_s), u"Why?"_s, u"So."_s}}};
    entry.context = {u"web-url:https://a.test/(1)?q=%3C2%3E"_s, u"a [site]"_s,
                     ReadingContextSource::webURL};
    return entry;
}

/// A job whose end can be waited for.
struct Job {
    NotesExport exporting;
    std::optional<NotesExport::Result> result;
    qsizetype written = 0;

    Job()
    {
        QObject::connect(&exporting, &NotesExport::finished, &exporting,
                         [this](const NotesExport::Result &r) { result = r; });
        QObject::connect(&exporting, &NotesExport::progressed, &exporting,
                         [this](qsizetype count) { written = count; });
    }
    void start(const QList<NoteWithContext> &notes, const QString &path)
    {
        NotesExport::Order order{notes, {}, ExportFormat::Json, true, QDateTime(), path};
        for (int i = 0; i < notes.size(); ++i) {
            order.chosen.append(i);
        }
        exporting.start(std::move(order));
    }
    bool ends()
    {
        return waitUntil([this] { return result.has_value(); });
    }
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestNotesExport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "Asia/Shanghai"); }

    void quotesCells()
    {
        const std::pair<QString, QString> rows[] = {
            {u"潮, tide"_s, u"\"潮, tide\""_s},
            {u"say \"no\""_s, u"\"say \"\"no\"\"\""_s},
            {u"a\r\nb\rc\u2028d"_s, u"\"a\nb\nc\nd\""_s},
            {u"a\u2028b\u2029c"_s, u"\"a\nb\nc\""_s},
            // a mark keeps text from being read as a formula
            {u" \u00A0=1"_s, u"\"' \u00A0=1\""_s},
            {u"\uFEFF\u200B\u0001@x"_s, u"\"'\uFEFF\u200B@x\""_s},
            {u"\ta"_s, u"\"'\ta\""_s},
            {u"\ra"_s, u"\"'\na\""_s},
            {u"1=1"_s, u"\"1=1\""_s},
            {u"a;=1,+2\t @3, b-4"_s, u"\"a;'=1,'+2\t' @3, b-4\""_s},
            {u"a\n-1\r\n\n\u200B＝2\n - 3"_s, u"\"a\n'-1\n\n'\u200B＝2\n' - 3\""_s},
            {u"a;\"=1\""_s, u"\"a;'\"\"=1\"\"\""_s},
            {{}, u"\"\""_s},
        };
        for (const auto &[text, cell] : rows)
            QCOMPARE(CsvNotes::cell(text), cell);
        for (const QChar sign : u"=+-@＝＋－＠"_s)
            QCOMPARE(CsvNotes::cell(sign + u"1+1"_s), u"\"'"_s + sign + u"1+1\""_s);
    }

    void writesTheTable()
    {
        QCOMPARE(
            CsvNotes::head(),
            "\xEF\xBB\xBF\"front\",\"back\",\"questions\",\"place\",\"link\",\"date\",\"id\"\r\n");
        QCOMPARE(QString::fromUtf8(CsvNotes::row(noteOf(u"-1"_s))),
                 u"\"'-1\",\"Übersetzung\n\nmeaning\",\"Why?\n\nSo.\",\"a [site]\","
                 "\"https://a.test/(1)?q=%3C2%3E\",\"2026-11-23 03:00:00\","
                 "\"00000000-0000-4000-8000-00000000000A\"\r\n"_s);
    }

    void keepsMarkupAsText_data()
    {
        QTest::addColumn<QString>("text");
        int number = 0;
        const auto row = [&number](const QString &text) { QTest::addRow("%d", ++number) << text; };
        row(u"# heading\n## another\nunderlined\n=====\nand\n---"_s);
        row(u"- item\n+ item\n* item\n1. one\n2) two"_s);
        row(u"> quote\n\n```\ncode\n```\n~~~\n\n    indented `code`"_s);
        row(u"<b>bold</b> <!-- gone --> &amp; <https://a.test>"_s);
        row(u"*a* **b** _c_ ~~d~~ [e](https://a.test) ![f](g.png) \\* $x^2$"_s);
        row(u"|a|b|\n|-|-|\n|c|d|\na | b\n:-|-:"_s);
        row(u"[a]: https://a.test\n[a]\n\n***\n___\n- - -"_s);
        row(u"مرحبا 👩‍👩‍👧‍👦 é ܐ\n\tC#"_s);
    }

    void keepsMarkupAsText()
    {
        QFETCH(QString, text);
        QTextDocument document;
        const NoteWithContext entry = noteOf(text, text);
        document.setMarkdown(QString::fromUtf8(MarkdownNotes::note(entry, &entry, true)));
        const auto words = [](QString all) { return all.replace(QChar::Nbsp, u' ').simplified(); };
        const QString all = words(document.toPlainText());
        QVERIFY2(all.count(words(text)) >= 2, qPrintable(all)); // quoted, and explained by itself
        int headings = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            headings += block.blockFormat().headingLevel() > 0 ? 1 : 0;
            QVERIFY(block.textList() == nullptr);
            QVERIFY(!block.blockFormat().hasProperty(QTextFormat::BlockCodeFence));
            QVERIFY(
                !block.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth));
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                QVERIFY(!format.isImageFormat() && !format.fontItalic() && !format.fontStrikeOut());
                QVERIFY(!format.isAnchor() || part.fragment().text() == "a [site]"_L1
                        || format.anchorHref() == part.fragment().text()); // an address shown whole
            }
        }
        QCOMPARE(headings, 1);
    }

    void writesTheDocument()
    {
        const NoteWithContext first = noteOf(u"ubiquitous"_s);
        NoteWithContext second = noteOf(u"one\ntwo\n\nthree"_s, {});
        second.note.translation.clear();
        second.note.followUps.clear();
        second.context = {u"cloud"_s, u"Synced"_s, ReadingContextSource::appWindow};
        QCOMPARE(QString::fromUtf8(MarkdownNotes::note(first, nullptr, true)
                                   + MarkdownNotes::note(second, &first, true)),
                 u"## Monday, 23 November 2026\n\n### ubiquitous\n\nÜbersetzung\n\nmeaning\n\n"
                 "**Question:** Why?\n\n**Answer:** So.\n\n"
                 "[a \\[site\\]](<https://a.test/(1)?q=%3C2%3E>) · 03:00\n\n"
                 "### one two three\n\n> one\\\n> two\n>\n> three\n\n03:00\n\n"_s);
    }

    void writesEverythingAsJson()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"notes.json"_s);
        QList<NoteWithContext> notes{noteOf(u"\"a\"\u0000\u202E\\"_s),
                                     noteOf(QString(1'000'000, u'潮')), noteOf({})};
        notes[2].context = {u"window-session:x"_s, u"x"_s, ReadingContextSource::windowSession};
        QVERIFY(write(path, "readable by all before"));
        QVERIFY(
            QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        Job job;
        job.start(notes, path);
        QVERIFY(job.ends());
        QCOMPARE(job.result->outcome, NotesExport::Outcome::Written);
        QVERIFY(!job.exporting.isRunning());
        QCOMPARE(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
        const QJsonObject all = QJsonDocument::fromJson(contentOf(path)).object();
        QCOMPARE(all["format"_L1], u"vellumo-notes"_s);
        QCOMPARE(all["version"_L1], 1);
        const QJsonArray written = all["notes"_L1].toArray();
        QCOMPARE(written.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(written[i]["sourceText"_L1].toString(), notes[i].note.sourceText);
        }
        QCOMPARE(written[0]["id"_L1], u"00000000-0000-4000-8000-00000000000A"_s);
        QCOMPARE(written[0]["createdAt"_L1], u"2026-11-22T19:00:00.000Z"_s);
        QCOMPARE(written[0]["followUps"_L1][0]["answer"_L1], u"So."_s);
        QCOMPARE(written[0]["place"_L1]["link"_L1], u"https://a.test/(1)?q=%3C2%3E"_s);
        QVERIFY(written[2]["place"_L1]["link"_L1].isNull());
    }

    void failsWithoutAFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<NotesExport::Outcome>("outcome");
        using Outcome = NotesExport::Outcome;
        QTest::newRow("no folder") << u"gone/notes.json"_s << Outcome::NoFolder;
        QTest::newRow("is a folder") << u"folder"_s << Outcome::NotAFile;
        QTest::newRow("not allowed") << u"/sys/notes.json"_s << Outcome::NotAllowed;
        QTest::newRow("no room") << u"limited"_s << Outcome::NoSpace;
    }

    void failsWithoutAFile()
    {
        QFETCH(QString, path);
        const QTemporaryDir folder;
        const QDir inside(folder.path());
        QVERIFY(inside.mkdir(u"folder"_s));
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_FSIZE, &before); });
        if (path == "limited"_L1) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limited{100'000, before.rlim_max};
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
        }
        Job job;
        job.start(QList<NoteWithContext>(1000, noteOf(QString(1000, u'x'))), inside.filePath(path));
        QVERIFY(job.ends());
        QTEST(job.result->outcome, "outcome");
        QCOMPARE(inside.entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void keepsTheOldFileUntilTheEnd()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"notes.json"_s);
        QVERIFY(write(path, "old"));
        const QList<NoteWithContext> notes(20'000, noteOf(QString(2000, u'x')));
        Job job;
        job.start(notes, path);
        QVERIFY(waitUntil([&] { return job.written > 0; }));
        QCOMPARE(contentOf(path), "old");
        job.exporting.cancel();
        QVERIFY(job.ends());
        QCOMPARE(job.result->outcome, NotesExport::Outcome::Cancelled);
        QCOMPARE(contentOf(path), "old");
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);

        job.result.reset();
        job.start(notes, path);
        QVERIFY(job.ends());
        QVERIFY(contentOf(path).endsWith("]\n}\n"));
        {
            Job left; // destroyed while it writes
            left.start(notes, path);
        }
        QVERIFY(contentOf(path).endsWith("]\n}\n"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
};

QTEST_MAIN(TestNotesExport)
#include "test_notes_export.moc"
