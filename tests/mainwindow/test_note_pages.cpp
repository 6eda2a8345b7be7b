// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The notes on the pages of the main window.

#include "ShownNotes.h"
#include "driver/Waiting.h"
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

class TestNotePages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void readsANote()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(3);
        desk.notes.notes[1].note.sourceText = u"<b>bold</b>"_s;
        desk.show();
        QTest::keyClick(desk.window.window(), Qt::Key_F, Qt::ControlModifier);
        for (const char c : {'b', 'o', 'l', 'd'}) {
            QTest::keyClick(desk.window.window(), c);
        }
        QCOMPARE(desk.text("count"), u"1 of 3"_s);
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("sourceText"), u"<b>bold</b>"_s);
        QCOMPARE(desk.text("context"), u"a.test · Today, 18:00"_s);
        QCOMPARE(desk.window.openNoteContext(), desk.notes.notes[1].context);
        desk.click("askFurther");
        QCOMPARE(desk.host.asked, desk.notes.notes[1].note.id);
        desk.click("copy");
        QVERIFY(desk.host.copied.contains("<b>bold</b>"_L1));
        QVERIFY(!desk.item("error"));
        desk.click("openPage");
        QCOMPARE(desk.host.opened, QUrl(u"https://a.test/1"_s));
        QVERIFY(desk.text("error").contains("https://a.test/1"_L1));

        // a follow-up that is asked meanwhile appears
        desk.notes.notes[1].note.followUps = {{QUuid::createUuid(), u"Why?"_s, u"So."_s}};
        Q_EMIT desk.notes.vellumoNotesDidChange();
        QVERIFY(waitUntil(
            [&] { return textsOf(desk.window.window()->contentItem()).contains(u"Why?"_s); }));
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.item("sourceText"));
        QCOMPARE(desk.text("count"), u"1 of 3"_s);
        QCOMPARE(desk.window.openNoteContext(), std::nullopt);
    }

    void opensMenusByRightClick()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(3);
        desk.show();
        const auto rightClick = [&desk](const char *name) {
            const QQuickItem *item = desk.item(name);
            QVERIFY2(item != nullptr, name);
            QTest::mouseClick(desk.window.window(), Qt::RightButton, {},
                              item->mapToScene({20, 10}).toPoint());
        };
        rightClick("latest");
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
        QVERIFY(desk.host.copied.contains("note 0"_L1));
        rightClick("latest");
        desk.click("menuOpenPage");
        QCOMPARE(desk.host.opened, QUrl(u"https://a.test/1"_s));
        // which no browser opens, so that the note shows the address
        QVERIFY(desk.text("error").contains("https://a.test/1"_L1));

        QCOMPARE(desk.text("sourceText"), u"note 0"_s);
        desk.key(Qt::Key_J);
        QCOMPARE(desk.text("sourceText"), u"note 1"_s);
        desk.key(Qt::Key_J);
        desk.key(Qt::Key_J); // there is none
        QCOMPARE(desk.text("sourceText"), u"note 2"_s);
        desk.key(Qt::Key_K);
        rightClick("sourceText");
        desk.click("menuCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), u"note 1"_s);
        desk.key(Qt::Key_Escape);
        rightClick("latest");
        desk.click("menuExport");
        QCOMPARE(desk.text("exportCount"), u"One note"_s);
        desk.key(Qt::Key_Escape);
        rightClick("latest");
        desk.click("menuDelete");
        QCOMPARE(desk.notes.notes.size(), 2);
        desk.item("latest")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Menu);
        QVERIFY(desk.item("menuOpen") != nullptr);
        desk.key(Qt::Key_Escape);
        desk.key(Qt::Key_Delete);
        QCOMPARE(desk.notes.notes.size(), 1);
    }

    void showsANoteBesideTheList()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(3);
        desk.show();
        desk.window.window()->resize(1300, 700);
        desk.click("notes");
        desk.item("rows")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Return);
        QVERIFY(waitUntil([&] { return desk.item("rows") && desk.item("sourceText"); }));
        QCOMPARE(desk.text("sourceText"), u"note 0"_s);
        desk.key(Qt::Key_Down);
        QCOMPARE(desk.text("sourceText"), u"note 1"_s);
        // after a click the keys are those of the list, not of the search
        desk.click("search");
        QTest::mouseClick(desk.window.window(), Qt::LeftButton, {},
                          desk.item("rows")->mapToScene({200, 60}).toPoint());
        QCOMPARE(desk.text("sourceText"), u"note 0"_s);
        desk.key(Qt::Key_J);
        QCOMPARE(desk.text("sourceText"), u"note 1"_s);
        QCOMPARE(desk.text("search"), QString());
        desk.window.window()->resize(1040, 700);
        QVERIFY(waitUntil([&] { return !desk.item("rows"); }));
        desk.window.window()->resize(1300, 700);
        QVERIFY(waitUntil([&] { return desk.item("rows") != nullptr; }));
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.item("sourceText") && desk.item("rows"));
    }

    void walksTheInsights()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(30);
        desk.notes.notes[3].context = {u"cloud"_s, u"Synced"_s, ReadingContextSource::appWindow};
        desk.notes.notes[4].context.displayName = u"cloud"_s;
        desk.notes.notes[5].context.displayName = u"100 %1 Paper"_s;
        desk.notes.notes[5].note.explanation = u"of a.test"_s;
        desk.show();
        desk.item("allNotes")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("count"), u"30"_s);
        desk.click("insights");
        QCOMPARE(desk.text("insightsSummary"), u"30 notes on 2 days."_s);
        desk.item("days")->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(desk.text("figure"), u"Today: 20 notes"_s);
        desk.key(Qt::Key_Up);
        QCOMPARE(desk.text("figure"), u"Yesterday: 10 notes"_s);
        desk.setLanguage(u"Chinese"_s);
        QCOMPARE(desk.text("figure"), u"昨天：10 条"_s);
        const auto filter = [&] {
            return desk.item("placeFilter") != nullptr
                ? desk.item("placeFilter")->property("text").toString()
                : QString();
        };
        desk.key(Qt::Key_Return); // the notes of that day
        QCOMPARE(filter(), u"昨天"_s);
        QCOMPARE(desk.text("count"), u"10 / 30"_s);
        desk.click("insights");
        desk.item("days")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Tab);
        desk.key(Qt::Key_Return); // those of this month, which is the only one with notes
        QCOMPARE(filter(), u"2026年11月"_s);
        QCOMPARE(desk.text("count"), u"30 / 30"_s);
        desk.click("insights");
        desk.item("days")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Tab, 2);
        desk.key(Qt::Key_Return); // the first place
        QCOMPARE(filter(), u"来自 a.test"_s);
        QCOMPARE(desk.text("count"), u"27 / 30"_s);
        QTest::keyClick(desk.window.window(), '9'); // searches there
        QCOMPARE(desk.text("count"), u"3 / 30"_s);
        desk.key(Qt::Key_Escape);
        QCOMPARE(desk.text("count"), u"27 / 30"_s);
        desk.key(Qt::Key_Escape);
        QCOMPARE(desk.text("count"), u"30"_s);
        const QStringList names{u"来自 100 %1 Paper"_s, u"来自 已同步的笔记"_s, u"来自 cloud"_s};
        QStringList met;
        for (int place = 1; place <= names.size(); ++place) {
            desk.click("insights");
            desk.item("place")->forceActiveFocus(Qt::TabFocusReason);
            desk.key(Qt::Key_Down, place);
            desk.key(Qt::Key_Return);
            QCOMPARE(desk.text("count"), u"1 / 30"_s);
            met << filter();
        }
        QCOMPARE(QSet<QString>(met.begin(), met.end()), QSet<QString>(names.begin(), names.end()));
        desk.item("placeFilter")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Space);
        QVERIFY(!desk.item("placeFilter"));
        QCOMPARE(desk.text("count"), u"30"_s);
        QCOMPARE(desk.window.window()->activeFocusItem()->objectName(), u"search"_s);
    }

    void reportsAnUnreadableFileOnce()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.unreadable = {u"/a/notes.json.unreadable-2"_s, u"/a/notes.json.unreadable-1"_s};
        desk.show();
        QVERIFY(desk.text("notesFileWords").endsWith(u"/a/notes.json.unreadable-2"_s));
        desk.click("notesFileAccept");
        QVERIFY(!desk.item("notesFileWords"));

        desk.notes.failure = u"No space left"_s;
        Q_EMIT desk.notes.filesChanged();
        QVERIFY(desk.text("notesFileWords").contains(u"No space left"_s));

        desk.notes.failure.reset();
        MainWindowController later(
            desk.engine, {desk.notes, desk.auth, nullptr, desk.defaults, desk.clock, desk.texts},
            desk.host);
        later.show();
        const auto *notice = later.window()->findChild<QQuickItem *>(u"notesFileWords"_s);
        QVERIFY(notice && !notice->isVisible());

        // another one, first under the name that notes are read from
        const QTemporaryDir folder;
        const auto breaks = [&](const QString &name) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            desk.notes.unreadable.prepend(file.fileName());
            Q_EMIT desk.notes.filesChanged();
        };
        breaks(u"notes.json"_s);
        QVERIFY(notice->isVisible());
        QVERIFY(notice->property("text").toString().contains("is kept, and set aside when"_L1));
        desk.click("notesFileAccept");
        QVERIFY(!desk.item("notesFileWords"));
        const QString aside = folder.filePath(u"notes.json.unreadable-3"_s);
        QVERIFY(QFile::rename(desk.notes.unreadable[0], aside));
        desk.notes.unreadable[0] = aside;
        Q_EMIT desk.notes.filesChanged();
        QVERIFY(!notice->isVisible() && !desk.item("notesFileWords"));
        breaks(u"notes.json.unreadable-4"_s);
        QVERIFY(notice->isVisible());
    }

    void leavesNoKeyboardOnWhatIsGone()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(3);
        desk.notes.unreadable = {u"/a/notes.json.unreadable-1"_s};
        desk.show();
        const auto goesBy = [&](const char *button, Qt::Key key) {
            desk.item(button)->forceActiveFocus();
            desk.key(key);
            return !desk.item(button) && desk.window.window()->activeFocusItem()->isVisible();
        };
        QVERIFY(goesBy("notesFileAccept", Qt::Key_Space));
        desk.click("notes");
        desk.click("select");
        QVERIFY(goesBy("selectAll", Qt::Key_Escape));
    }

    void exportsWhatIsMarked()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"notes.json"_s);
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(30); // of two days
        QString suggested;
        desk.host.answer = [&](const PageHosting::FileQuestion &question) {
            suggested = question.suggestedName;
            question.onChosen(question.suffix == "json"_L1 ? path : folder.filePath(suggested));
        };
        const auto press = [&](Qt::Key key, Qt::KeyboardModifier modifier) {
            QTest::keyClick(desk.window.window(), key, modifier);
        };
        const auto exportsBy = [&](const char *answer) {
            desk.click("export");
            desk.key(Qt::Key_Tab);
            const auto hasFocus = [&](QLatin1StringView name) {
                return desk.window.window()->activeFocusItem()->objectName() == name;
            };
            for (int i = 0; i < 10 && !hasFocus("exportChoose"_L1); ++i) {
                if (hasFocus("exportFormat"_L1)) {
                    desk.key(Qt::Key_Right, 2);
                }
                desk.key(Qt::Key_Tab);
            }
            desk.key(Qt::Key_Return);
            if (answer != nullptr) {
                desk.click(answer);
            }
        };
        const auto written = [](const QString &to) {
            QFile file(to);
            QStringList texts;
            if (file.open(QIODevice::ReadOnly)) {
                const auto all = QJsonDocument::fromJson(file.readAll())["notes"_L1].toArray();
                for (const QJsonValue &note : all) {
                    texts << note["sourceText"_L1].toString().mid(5);
                }
            }
            return texts.join(u' ');
        };
        const auto tells = [&](const QString &outcome) {
            return waitUntil([&] { return desk.text("exportOutcome") == outcome; });
        };
        desk.show();
        desk.click("notes");
        desk.key(Qt::Key_Down);
        press(Qt::Key_Space, Qt::ControlModifier);
        press(Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(desk.text("count"), u"30 selected"_s);
        press(Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(desk.text("count"), u"1 selected"_s);
        desk.key(Qt::Key_Down, 3);
        press(Qt::Key_Down, Qt::ShiftModifier); // a new range
        QCOMPARE(desk.text("count"), u"3 selected"_s);
        desk.click("export");
        desk.item("exportScope")->forceActiveFocus();
        desk.key(Qt::Key_Left); // all of them
        desk.click("exportChoose");
        QVERIFY(tells(u"Exported 30 notes to “vellumo-notes-2026-11-22.md”"_s));
        QCOMPARE(desk.text("count"), u"3 selected"_s);
        exportsBy(nullptr);
        QVERIFY(tells(u"Exported 3 notes to “notes.json”"_s));
        QCOMPARE(written(path), u"0 3 4"_s);
        QCOMPARE(suggested, u"vellumo-notes-2026-11-22.json"_s);
        QCOMPARE(desk.text("count"), u"30"_s); // marking has ended

        desk.click("search");
        for (const char c : {'2', '9'}) {
            QTest::keyClick(desk.window.window(), c);
        }
        exportsBy("exportCancel");
        QCOMPARE(written(path), u"0 3 4"_s);
        exportsBy("exportReplace");
        QVERIFY(tells(u"Exported one note to “notes.json”"_s));
        QCOMPARE(written(path), u"29"_s);

        desk.key(Qt::Key_Escape); // empties the search
        desk.key(Qt::Key_Down);
        press(Qt::Key_A, Qt::ControlModifier);
        desk.key(Qt::Key_Space);
        QCOMPARE(desk.text("count"), u"29 selected"_s);
        desk.key(Qt::Key_Escape);
        QCOMPARE(desk.text("count"), u"30"_s);
        QTest::mouseClick(desk.window.window(), Qt::LeftButton, Qt::ControlModifier,
                          desk.item("rows")->mapToScene({100, 60}).toPoint());
        QTest::mouseClick(desk.window.window(), Qt::LeftButton, Qt::ShiftModifier,
                          desk.item("rows")->mapToScene({100, 210}).toPoint());
        QCOMPARE(desk.text("count"), u"3 selected"_s);

        QVERIFY(QDir(folder.path()).removeRecursively());
        exportsBy(nullptr);
        QVERIFY(tells(u"The folder no longer exists. Choose another one."_s));
        QCOMPARE(desk.text("count"), u"3 selected"_s);
        desk.click("dismissExport");
        QVERIFY(!desk.item("exportOutcome"));

        // something else is chosen while the dialog is open
        const QTemporaryDir other;
        std::function<void(const QString &)> chooseLate;
        desk.host.answer = [&](const PageHosting::FileQuestion &question) {
            chooseLate = question.onChosen;
        };
        const int before = desk.host.closedDialogs;
        exportsBy(nullptr);
        desk.click("exportFormat"); // the second of three
        chooseLate(other.filePath(u"late.json"_s));
        QVERIFY(tells(u"Exported 3 notes to “late.json”"_s));
        QCOMPARE(written(other.filePath(u"late.json"_s)).split(u' ').size(), 3);
        QCOMPARE(desk.text("count"), u"30"_s);
        QCOMPARE(desk.host.closedDialogs, before);

        // and while the sheet is dismissed
        exportsBy("exportCancel");
        QCOMPARE(desk.host.closedDialogs, before + 1);
        chooseLate(other.filePath(u"never"_s));
        QVERIFY(!desk.item("exportTitle") && !desk.item("exportOutcome"));
    }

    void deletesAndBringsBack()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(5);
        const QList<NoteWithContext> all = desk.notes.notes;
        const auto settle = [&] { // the list follows the store from the event loop
            QVERIFY(waitUntil(
                [&] { return desk.text("count") == QString::number(desk.notes.notes.size()); }));
        };
        desk.show();
        desk.click("notes");
        desk.item("rows")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Down); // the second note
        desk.key(Qt::Key_Delete);
        settle();
        QCOMPARE(desk.notes.deleted, QSet{all[1].note.id});
        QCOMPARE(desk.text("deletionWords"), u"Note deleted."_s);
        desk.key(Qt::Key_Delete); // continues with the next
        settle();
        QVERIFY(desk.notes.isDeleted(all[2].note.id));
        QTest::keyClick(desk.window.window(), Qt::Key_Z, Qt::ControlModifier);
        settle();
        QCOMPARE(desk.notes.deleted, QSet{all[1].note.id});
        QVERIFY(!desk.item("deletionWords"));

        desk.click("select");
        desk.click("selectAll");
        desk.setLanguage(u"Chinese"_s);
        desk.click("deleteSelected");
        QCOMPARE(desk.text("deletionWords"), u"已删除 4 条笔记。"_s);
        QCOMPARE(desk.notes.noteCount(), 0);
        desk.click("deletionAccept");
        settle();
        QCOMPARE(desk.notes.noteCount(), 4);

        desk.item("rows")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Return);
        desk.click("delete");
        QVERIFY(!desk.item("sourceText"));
        QCOMPARE(desk.notes.noteCount(), 3);
        desk.click("home"); // the offer ends with the page
        QVERIFY(!desk.item("deletionWords"));
        QTest::keyClick(desk.window.window(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(desk.notes.noteCount(), 3);
    }

    void keepsItsPlaceWhenANoteIsAdded()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(200);
        desk.show();
        desk.click("notes");
        QQuickItem *rows = desk.item("rows");
        rows->setProperty("contentY", 3000);
        const NoteWithContext added = noteOf(-60, u"one more"_s);
        desk.notes.add(added.note, added.context);
        QVERIFY(waitUntil([&] { return desk.text("count") == "201"_L1; }));
        QVERIFY(rows->property("contentY").toReal() > 2000);

        // the keyboard focus stays with its note, in the list and on the open card
        const auto add = [&](double secondsAgo) {
            desk.notes.add(noteOf(secondsAgo, u"newest"_s).note, added.context);
            QCoreApplication::processEvents();
        };
        desk.key(Qt::Key_Down, 2);
        rows->setProperty("contentY", 3000); // with the wheel
        add(-120);
        static_cast<void>(desk.window.window()->grabWindow());
        QVERIFY(rows->property("contentY").toReal() > 2000);
        QVERIFY(rows->hasActiveFocus());
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("sourceText"), u"note 0"_s);
        desk.click("home");
        desk.item("latest")->forceActiveFocus(Qt::TabFocusReason);
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("sourceText"), u"one more"_s);
        add(-180);
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.item("sourceText"));
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("sourceText"), u"one more"_s);
    }

    void opensWithManyNotes()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.notes.notes = notes(100'000);
        desk.notes.notes[0].note.sourceText = QString(1'000'000, u'x');
        desk.show();
        desk.click("notes");
        QVERIFY(desk.item("rows"));
        // only visible rows exist
        QVERIFY(desk.window.window()->findChildren<QQuickItem *>().size() < 2000);
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_End);
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("sourceText"), u"note 99999"_s);
        desk.click("insights");
        QVERIFY(waitUntil([&] { return desk.item("days") != nullptr; }));
        QVERIFY(desk.text("insightsSummary").startsWith("100000 notes on "_L1));
    }
};

QTEST_MAIN(TestNotePages)
#include "test_note_pages.moc"
