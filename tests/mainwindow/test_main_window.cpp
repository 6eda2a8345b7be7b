// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The main window as a user meets it, without a desktop.

#include "WindowDesk.h"
#include "app/ActivationGuard.h"
#include "platform/ApplicationActivation.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "support/Waiting.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

const ReadingContext page{u"web-url:https://a.test/1"_s, u"a.test"_s, ReadingContextSource::webURL};

NoteWithContext noteOf(double secondsAgo, const QString &source)
{
    NoteWithContext entry;
    entry.note = {QUuid::createUuid(),          source, {}, u"explained"_s,
                  eveningOfTheDay - secondsAgo, {}};
    entry.context = page;
    return entry;
}

QList<NoteWithContext> notes(int count)
{
    QList<NoteWithContext> list;
    for (int i = 0; i < count; ++i) {
        list.append(noteOf(i * 3600.0, u"note %1"_s.arg(i)));
    }
    return list;
}

/// Everything that can be read, a line for each text.
QStringList textsOf(const QQuickItem *item)
{
    QStringList texts;
    if (!item->isVisible()) {
        return texts;
    }
    const QString text = item->property("text").toString();
    const bool isDrawn = item->metaObject()->indexOfProperty("truncated") >= 0
        || item->metaObject()->indexOfProperty("readOnly") >= 0;
    if (!text.isEmpty() && isDrawn) {
        texts << text;
    }
    const auto children = item->childItems();
    for (const QQuickItem *child : children) {
        texts << textsOf(child);
    }
    return texts;
}

/// Buttons that are cut, or lie outside of the window.
QStringList cutButtons(const QQuickItem *item)
{
    QStringList cut;
    if (!item->isVisible()) {
        return cut;
    }
    if (item->metaObject()->indexOfProperty("glyph") >= 0) {
        const QRectF place = item->mapRectToScene(QRectF(QPointF(), item->size()));
        if (item->width() < item->implicitWidth() || place.left() < 0
            || place.right() > item->window()->width()) {
            cut << item->property("text").toString();
        }
    }
    const auto children = item->childItems();
    for (const QQuickItem *child : children) {
        cut << cutButtons(child);
    }
    return cut;
}

} // namespace

Q_DECLARE_METATYPE(vellumo::Point)

class TestMainWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "UTC"); }
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }
    void isOneWindowThatIsKept();
    void signsIn();
    void goesOnWithoutAnAccount();
    void signingOutLeadsBack();
    void switchesTheLanguageEverywhere();
    void keysReachEverything_data();
    void keysReachEverything();
    void fitsLargeText_data();
    void fitsLargeText();
    void readsANote();
    void walksTheInsights();
    void tellsOfAnUnreadableFileOnce();
    void exportsWhatIsMarked();
    void keepsItsPlaceWhenANoteIsAdded();
    void opensWithManyNotes();
    void isHiddenWhileAPanelIsClicked_data();
    void isHiddenWhileAPanelIsClicked();
};

void TestMainWindow::isOneWindowThatIsKept()
{
    WindowDesk desk;
    int made = 0;
    desk.window.onWindowMade = [&made](QWindow &) { ++made; };
    QCOMPARE(desk.window.window(), nullptr);
    desk.show();
    QQuickWindow *window = desk.window.window();
    QVERIFY(window && window->isVisible());
    QCOMPARE(window->title(), u"vellumo"_s);
    desk.show();
    const QRect chosen(40, 30, 700, 500);
    window->setGeometry(chosen);
    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!window->isVisible());
    desk.show();
    QCOMPARE(desk.window.window(), window);
    QVERIFY(window->isVisible());
    QCOMPARE(window->geometry(), chosen);
    QCOMPARE(made, 1);
}

void TestMainWindow::signsIn()
{
    WindowDesk desk;
    desk.workspace.opensUrls = false;
    desk.show();
    QCOMPARE(desk.text("title"), u"Welcome to vellumo"_s);
    QCOMPARE(desk.text("signIn"), u"Continue with Google"_s);
    QVERIFY(!desk.item("error"));

    desk.click("signIn");
    QVERIFY(waitUntil([&] { return desk.item("error") != nullptr; }));
    const QString error = desk.text("error");
    QVERIFY(!error.isEmpty());
    QCOMPARE(desk.text("signIn"), u"Continue with Google"_s);

    desk.workspace.opensUrls = true;
    desk.click("signIn");
    QVERIFY(!desk.item("error"));
    QCOMPARE(desk.text("signIn"), u"Opening browser…"_s);
    QVERIFY(!desk.item("signIn")->isEnabled());
    desk.browser.handleCallback(u"vellumo://auth?refreshToken=r&uid=u&email=new@a.test"_s);
    QVERIFY(waitUntil([&] {
        desk.http.answer(HttpResponse{
            .status = 200, .body = R"({"id_token":"i","refresh_token":"r","expires_in":"3600"})"});
        return desk.item("account") != nullptr;
    }));
    QCOMPARE(desk.text("account"), u"new@a.test"_s);
    QCOMPARE(desk.text("syncState"), u"All notes uploaded"_s);
    QVERIFY(!desk.item("signIn"));
    QCOMPARE(desk.sync.asked, QStringList{u"arrivals"_s});
    desk.click("notes");
    QCOMPARE(desk.sync.asked.last(), u"pull"_s);
}

void TestMainWindow::goesOnWithoutAnAccount()
{
    WindowDesk desk;
    desk.show();
    desk.click("withoutAccount");
    QVERIFY(desk.item("greeting"));
    QVERIFY(!desk.item("syncState"));
    desk.click("goToSignIn");
    QVERIFY(desk.item("signIn") && !desk.item("greeting"));
    desk.click("withoutAccount");
    QVERIFY(desk.item("greeting"));

    MainWindowController later(
        desk.engine, {desk.notes, desk.auth, nullptr, desk.defaults, desk.clock, desk.texts});
    later.show();
    QVERIFY(later.window()->findChild<QQuickItem *>(u"greeting"_s));
}

void TestMainWindow::signingOutLeadsBack()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.storeSession();
    QVERIFY(waitUntil([&] { return desk.auth.isSignedIn(); }));
    desk.show();
    desk.click("settings");
    desk.auth.signOut(); // from elsewhere, with a sheet open
    QVERIFY(desk.item("signIn") && !desk.item("settingsTitle"));
}

void TestMainWindow::switchesTheLanguageEverywhere()
{
    WindowDesk desk(u"Klingon"_s);
    desk.useWithoutAccount();
    desk.notes.notes = notes(1);
    desk.show();
    desk.click("settings");
    const QQuickItem *picker = desk.item("language");
    QCOMPARE(picker->property("current").toInt(), -1);
    QCOMPARE(desk.text("settingsTitle"), u"设置"_s);

    const auto choose = [&](double share) {
        QTest::mouseClick(
            desk.window.window(), Qt::LeftButton, {},
            picker->mapToScene({picker->width() * share, picker->height() / 2}).toPoint());
    };
    choose(0.75);
    QCOMPARE(desk.preferences.preferredOutputLanguage(), u"English"_s);
    QCOMPARE(desk.text("settingsTitle"), u"Settings"_s);
    const QStringList english = textsOf(desk.window.window()->contentItem());
    const QRegularExpression chinese(u"\\p{Han}"_s);
    QCOMPARE(english.filter(chinese), QStringList{u"中文"_s});

    choose(0.25);
    QCOMPARE(desk.preferences.preferredOutputLanguage(), u"Chinese"_s);
    QStringList remaining = textsOf(desk.window.window()->contentItem());
    remaining.removeIf([&](const QString &text) { return text.contains(chinese); });
    const QSet<QString> neutral{u"✦ vellumo"_s, u"English"_s, u"note 0"_s,
                                u"explained"_s, u"a.test"_s,  u"1"_s};
    remaining.removeIf(
        [&](const QString &text) { return neutral.contains(text) || text.contains(u':'); });
    QCOMPARE(remaining, QStringList());
}

void TestMainWindow::keysReachEverything_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QStringList>("reached");
    const QStringList bar{u"home"_s, u"notes"_s, u"insights"_s, u"settings"_s, u"goToSignIn"_s};
    QTest::newRow("sign-in") << u"sign-in"_s << QStringList{u"signIn"_s, u"withoutAccount"_s};
    QTest::newRow("home") << u"home"_s << bar + QStringList{u"allNotes"_s, u"latest"_s};
    QTest::newRow("notes") << u"notes"_s
                           << bar
            + QStringList{u"select"_s, u"export"_s, u"search"_s, u"grouping"_s, u"rows"_s};
    QTest::newRow("insights") << u"insights"_s << bar + QStringList{u"days"_s, u"place"_s};
    QTest::newRow("note") << u"note"_s
                          << bar
            + QStringList{u"back"_s, u"openPage"_s, u"copy"_s, u"askFurther"_s};
    QTest::newRow("export") << u"export"_s
                            << QStringList{u"exportFormat"_s, u"exportCancel"_s, u"exportChoose"_s};
    QTest::newRow("settings") << u"settings"_s << QStringList{u"language"_s, u"done"_s};
}

void TestMainWindow::keysReachEverything()
{
    QFETCH(QString, view);
    WindowDesk desk;
    desk.notes.notes = notes(3);
    if (view != "sign-in"_L1) {
        desk.useWithoutAccount();
    }
    desk.show();
    if (view == "notes"_L1 || view == "note"_L1 || view == "export"_L1) {
        desk.click("notes");
    } else if (view == "insights"_L1) {
        desk.click("insights");
    } else if (view == "settings"_L1) {
        QTest::keyClick(desk.window.window(), Qt::Key_Comma, Qt::ControlModifier);
    }
    if (view == "export"_L1) {
        desk.click("export");
    }
    if (view == "note"_L1) {
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
    }
    QSet<QString> met;
    for (int i = 0; i < 20; ++i) {
        desk.key(Qt::Key_Tab);
        QCoreApplication::processEvents(); // a sheet brings the keyboard back
        const QQuickItem *item = desk.window.window()->activeFocusItem();
        while (item->objectName().isEmpty()) {
            item = item->parentItem(); // the row of a list
        }
        met << item->objectName();
    }
    QFETCH(QStringList, reached);
    QCOMPARE(met, QSet<QString>(reached.begin(), reached.end()));
}

void TestMainWindow::fitsLargeText_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("size");
    for (const auto &language : {u"English"_s, u"Chinese"_s}) {
        const auto row = [&](const char *name) -> QTestData & {
            return QTest::addRow("%s, %s", qPrintable(language), name) << language;
        };
        row("a small screen") << QSize(1008, 552);
        row("the least window") << QSize(640, 440);
    }
}

void TestMainWindow::fitsLargeText()
{
    QFETCH(QString, language);
    QFETCH(QSize, size);
    const QFont before = QGuiApplication::font();
    QFont font = before;
    font.setPointSizeF(20); // twice the usual
    QGuiApplication::setFont(font);
    const auto restore = qScopeGuard([&] { QGuiApplication::setFont(before); });
    WindowDesk desk(language);
    desk.notes.notes = notes(3);
    desk.show();
    desk.window.window()->resize(size);
    QCoreApplication::processEvents();
    const auto cut = [&] {
        static_cast<void>(desk.window.window()->grabWindow()); // lays out what has changed
        return cutButtons(desk.window.window()->contentItem());
    };
    QCOMPARE(cut().join(u", "_s), QString());
    desk.useWithoutAccount();
    desk.storeSession();
    desk.click("withoutAccount");
    for (const char *view : {"home", "notes", "insights", "settings"}) {
        desk.click(view);
        QCOMPARE(cut().join(u", "_s), QString());
    }
    desk.key(Qt::Key_Escape);
    desk.click("notes");
    desk.click("select");
    desk.key(Qt::Key_Space);
    QCOMPARE(cut().join(u", "_s), QString());
    desk.click("export");
    QCOMPARE(cut().join(u", "_s), QString());
    const QQuickItem *choose = desk.item("exportChoose");
    QVERIFY(choose->mapToScene({0, choose->height()}).y() < desk.window.window()->height());
    desk.key(Qt::Key_Escape, 2);
    desk.click("notes");
    desk.key(Qt::Key_Down);
    desk.key(Qt::Key_Return);
    QVERIFY(desk.item("back"));
    QCOMPARE(cut().join(u", "_s), QString());
}

void TestMainWindow::readsANote()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.notes.notes = notes(3);
    desk.notes.notes[1].note.sourceText = u"<b>bold</b>"_s;
    QString copied;
    QUuid asked;
    QUrl opened;
    desk.window.onCopy = [&](const QString &text) { copied = text; };
    desk.window.onAskFurther = [&](const QUuid &id) { asked = id; };
    desk.window.onOpenPage = [&](const QUrl &url) {
        opened = url;
        return false;
    };
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
    desk.click("askFurther");
    QCOMPARE(asked, desk.notes.notes[1].note.id);
    desk.click("copy");
    QVERIFY(copied.contains("<b>bold</b>"_L1));
    desk.click("openPage");
    QCOMPARE(opened, QUrl(u"https://a.test/1"_s));
    QVERIFY(desk.text("error").contains("https://a.test/1"_L1));

    // what is asked meanwhile appears
    desk.notes.notes[1].note.followUps = {{QUuid::createUuid(), u"Why?"_s, u"So."_s}};
    Q_EMIT desk.notes.vellumoNotesDidChange();
    QVERIFY(waitUntil(
        [&] { return textsOf(desk.window.window()->contentItem()).contains(u"Why?"_s); }));
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.item("sourceText"));
    QCOMPARE(desk.text("count"), u"1 of 3"_s);
}

void TestMainWindow::walksTheInsights()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.notes.notes = notes(30);
    desk.notes.notes[3].context.displayName = u"100 %1 Paper"_s;
    desk.show();
    desk.click("insights");
    QCOMPARE(desk.text("insightsSummary"), u"30 notes on 2 days."_s);
    desk.item("days")->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(desk.text("figure"), u"Today: 20 notes"_s);
    desk.key(Qt::Key_Up);
    QCOMPARE(desk.text("figure"), u"Yesterday: 10 notes"_s);
    desk.setLanguage(u"Chinese"_s);
    QCOMPARE(desk.text("figure"), u"昨天:10 条"_s);
    desk.key(Qt::Key_Tab);
    desk.key(Qt::Key_Down);
    desk.key(Qt::Key_Return); // the second place
    QCOMPARE(desk.text("count"), u"1 / 30"_s);
    QCOMPARE(desk.text("search"), u"100 %1 Paper"_s);
}

void TestMainWindow::tellsOfAnUnreadableFileOnce()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.notes.unreadable = {u"/a/notes.json.unreadable-2"_s, u"/a/notes.json.unreadable-1"_s};
    desk.show();
    QVERIFY(desk.text("notesFileNotice").endsWith(u"/a/notes.json.unreadable-2"_s));
    desk.click("knowNotesFile");
    QVERIFY(!desk.item("notesFileNotice"));

    desk.notes.failure = u"No space left"_s;
    Q_EMIT desk.notes.filesChanged();
    QVERIFY(desk.text("notesFileNotice").contains(u"No space left"_s));

    desk.notes.failure.reset();
    MainWindowController later(
        desk.engine, {desk.notes, desk.auth, nullptr, desk.defaults, desk.clock, desk.texts});
    later.show();
    const auto *notice = later.window()->findChild<QQuickItem *>(u"notesFileNotice"_s);
    QVERIFY(notice && !notice->isVisible());
    desk.notes.unreadable.prepend(u"/a/notes.json.unreadable-3"_s);
    Q_EMIT desk.notes.filesChanged();
    QVERIFY(notice->isVisible());
}

void TestMainWindow::exportsWhatIsMarked()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"notes.json"_s);
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.notes.notes = notes(30); // of two days
    QString suggested;
    desk.window.onChooseFile = [&](const NotesExporter::FileQuestion &question) {
        suggested = question.suggestedName;
        question.onChosen(path);
    };
    const auto press = [&](Qt::Key key, Qt::KeyboardModifier modifier) {
        QTest::keyClick(desk.window.window(), key, modifier);
    };
    const auto exportsBy = [&](const char *answer) {
        desk.click("export");
        desk.key(Qt::Key_Tab);
        while (desk.window.window()->activeFocusItem()->objectName() != "exportChoose"_L1) {
            if (desk.window.window()->activeFocusItem()->objectName() == "exportFormat"_L1) {
                desk.key(Qt::Key_Right, 2);
            }
            desk.key(Qt::Key_Tab);
        }
        desk.key(Qt::Key_Return);
        if (answer != nullptr) {
            desk.click(answer);
        }
    };
    const auto written = [&] {
        QFile file(path);
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
    exportsBy(nullptr);
    QVERIFY(tells(u"3 notes are in “notes.json”"_s));
    QCOMPARE(written(), u"0 3 4"_s);
    QCOMPARE(suggested, u"vellumo-notes-2026-11-22.json"_s);
    QCOMPARE(desk.text("count"), u"30"_s); // marking has ended

    desk.click("search");
    for (const char c : {'2', '9'}) {
        QTest::keyClick(desk.window.window(), c);
    }
    exportsBy("exportCancel");
    QCOMPARE(written(), u"0 3 4"_s);
    exportsBy("exportReplace");
    QVERIFY(tells(u"One note is in “notes.json”"_s));
    QCOMPARE(written(), u"29"_s);

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
    QVERIFY(tells(u"The folder is not there any more. Choose another one."_s));
    QCOMPARE(desk.text("count"), u"3 selected"_s);
}

void TestMainWindow::keepsItsPlaceWhenANoteIsAdded()
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
}

void TestMainWindow::opensWithManyNotes()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.notes.notes = notes(100'000);
    desk.notes.notes[0].note.sourceText = QString(1'000'000, u'x');
    desk.show();
    desk.click("notes");
    QVERIFY(desk.item("rows"));
    // only what can be seen exists
    QVERIFY(desk.window.window()->findChildren<QQuickItem *>().size() < 2000);
    desk.key(Qt::Key_Down);
    desk.key(Qt::Key_End);
    desk.key(Qt::Key_Return);
    QCOMPARE(desk.text("sourceText"), u"note 99999"_s);
}

void TestMainWindow::isHiddenWhileAPanelIsClicked_data()
{
    QTest::addColumn<Point>("pointer");
    QTest::addColumn<bool>("isPanelVisible");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("on the panel") << Point{150, 150} << true << true;
    QTest::newRow("where it was") << Point{150, 150} << false << false;
    QTest::newRow("beside it") << Point{50, 150} << true << false;
}

void TestMainWindow::isHiddenWhileAPanelIsClicked()
{
    QFETCH(bool, isPanelVisible);
    QFETCH(bool, isHidden);
    WindowDesk desk;
    desk.show();
    ApplicationActivation activation;
    FakeFloatingWindows panels;
    FakeScreens screens;
    const ActivationGuard guard(activation, panels, screens, desk.window);
    const auto panel = panels.createPanel({}, {});
    panel->setFrame({100, 100, 100, 100});
    if (isPanelVisible) {
        panel->orderFrontRegardless();
    }
    QFETCH(Point, pointer);
    screens.pointer = pointer;
    Q_EMIT activation.willBecomeActive();
    QCOMPARE(desk.window.hiddenForPanelActivation, isHidden);
    QCOMPARE(desk.window.window()->isVisible(), !isHidden);
    Q_EMIT activation.didBecomeActive();
    QVERIFY(!desk.window.hiddenForPanelActivation);
    QVERIFY(desk.window.window()->isVisible());
}

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
