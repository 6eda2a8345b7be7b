// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The main window as a user meets it, without a desktop.

#include "ShownNotes.h"
#include "app/ActivationGuard.h"
#include "platform/ApplicationActivation.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "support/IdToken.h"
#include "support/Waiting.h"
#include "ui/OrdinaryWindow.h"
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

Q_DECLARE_METATYPE(vellumo::Point)

class TestMainWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "UTC"); }
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }
    void isOneWindowThatIsKept();
    void signsIn_data();
    void signsIn();
    void goesOnWithoutAnAccount();
    void signingOutLeadsBack();
    void switchesTheLanguageEverywhere();
    void keysReachEverything_data();
    void keysReachEverything();
    void tellsOnceThatSettingsAreLost();
    void asksOnceWhetherToLookForUpdates();
    void fitsLargeText_data();
    void fitsLargeText();
    void isHiddenWhileAPanelIsClicked_data();
    void isHiddenWhileAPanelIsClicked();
};

void TestMainWindow::isOneWindowThatIsKept()
{
    WindowDesk desk;
    int made = 0;
    connect(&OrdinaryWindows::of(desk.engine), &OrdinaryWindows::made, this, [&made] { ++made; });
    QCOMPARE(desk.window.window(), nullptr);
    desk.show();
    QQuickWindow *window = desk.window.window();
    QVERIFY(window && window->isVisible());
    QCOMPARE(window->title(), u"vellumo"_s);
    QVERIFY(window->icon().pixmap(32).toImage().pixelColor(16, 16).alpha() > 0);
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

void TestMainWindow::signsIn_data()
{
    QTest::addColumn<bool>("isTokenGiven");
    QTest::newRow("with a token") << true;
    QTest::newRow("with none at first") << false;
}

void TestMainWindow::signsIn()
{
    QFETCH(bool, isTokenGiven);
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
    const QString callback = u"vellumo:?refreshToken=r&uid=u&email=new@a.test"_s;
    desk.click("cancelSignIn");
    desk.browser.handleCallback(callback); // is too late
    QCOMPARE(desk.text("signIn"), u"Continue with Google"_s);
    QVERIFY(!desk.item("error") && desk.http.requests.isEmpty());

    desk.click("signIn");
    desk.browser.handleCallback(callback);
    QVERIFY(waitUntil([&] { return !desk.http.requests.isEmpty(); }));
    if (isTokenGiven) {
        const QString token = idToken(u"u"_s, u"new@a.test"_s, u"i"_s);
        desk.http.answer(
            HttpResponse{.status = 200,
                         .body = R"({"refresh_token":"r","expires_in":"3600","id_token":")"
                             + token.toUtf8() + R"("})"});
    } else {
        desk.http.answer(HttpError{HttpError::Kind::timedOut});
    }
    QVERIFY(waitUntil([&] { return desk.item("account") != nullptr; }));
    QCOMPARE(desk.text("account"), u"new@a.test"_s);
    QCOMPARE(desk.text("syncState"),
             isTokenGiven ? u"All notes uploaded"_s : u"The sign-in service cannot be reached."_s);
    QVERIFY(!desk.item("signIn"));
    QCOMPARE(desk.sync.asked, isTokenGiven ? QStringList{u"arrivals"_s} : QStringList());
    desk.click("notes");
    QCOMPARE(desk.sync.asked.last(), u"pull"_s);
    if (isTokenGiven) {
        QVERIFY(!desk.item("uploadNotes"));
        desk.sync.withheld = true;
        desk.sync.left = 3;
        Q_EMIT desk.sync.changed();
        QCOMPARE(desk.text("uploadNotes"), u"Upload 3 notes"_s);
        QVERIFY(!desk.item("syncNow"));
        desk.click("uploadNotes");
        QCOMPARE(desk.sync.asked.last(), u"upload"_s);
    }
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
    desk.click("signIn");
    desk.click("withoutAccount");
    QVERIFY(desk.item("greeting") && !desk.auth.isWorking());

    MainWindowController later(
        desk.engine, {desk.notes, desk.auth, nullptr, desk.defaults, desk.clock, desk.texts},
        desk.host);
    later.show();
    QVERIFY(later.window()->findChild<QQuickItem *>(u"greeting"_s));
}

void TestMainWindow::signingOutLeadsBack()
{
    WindowDesk desk;
    desk.useWithoutAccount();
    desk.storeSession();
    QVERIFY(waitUntil([&] { return desk.auth.isSignedIn(); }));
    desk.notes.notes = notes(3);
    desk.show();
    desk.click("notes");
    QTest::keyClick(desk.window.window(), '1');
    QCOMPARE(desk.text("count"), u"1 of 3"_s);
    desk.click("select");
    desk.key(Qt::Key_Space);
    desk.click("export");
    desk.window.showService(); // from elsewhere, with a sheet open
    QVERIFY(desk.item("addressInput") && !desk.item("exportTitle"));
    desk.click("notes");
    desk.click("settings");
    desk.auth.signOut(); // likewise
    QVERIFY(desk.item("signIn") && !desk.item("settingsTitle"));
    desk.click("withoutAccount");
    QVERIFY(desk.item("greeting"));
    desk.click("notes");
    QCOMPARE(desk.text("count"), u"3"_s);
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
    desk.click("checkForUpdates");
    desk.click("quit");
    QCOMPARE(desk.chosen, (QStringList{u"updates"_s, u"quit"_s}));
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
    const QStringList bar{u"home"_s,     u"notes"_s,    u"insights"_s,
                          u"computer"_s, u"settings"_s, u"goToSignIn"_s};
    QTest::newRow("sign-in") << u"sign-in"_s << QStringList{u"signIn"_s, u"withoutAccount"_s};
    QTest::newRow("home") << u"home"_s << bar + QStringList{u"allNotes"_s, u"latest"_s};
    QTest::newRow("notes") << u"notes"_s
                           << bar
            + QStringList{u"select"_s, u"export"_s, u"search"_s, u"grouping"_s, u"rows"_s};
    QTest::newRow("insights") << u"insights"_s << bar + QStringList{u"days"_s, u"place"_s};
    QTest::newRow("computer") << u"computer"_s
                              << bar + QStringList{u"withdraw"_s,      u"mode"_s,
                                                   u"addressInput"_s,  u"modelInput"_s,
                                                   u"keyInput"_s,      u"save"_s,
                                                   u"tryOut"_s,        u"forgetKey"_s,
                                                   u"startsAtLogin"_s, u"readsByCopying"_s};
    QTest::newRow("note") << u"note"_s
                          << bar
            + QStringList{u"back"_s, u"openPage"_s, u"copy"_s, u"askFurther"_s};
    QTest::newRow("export") << u"export"_s
                            << QStringList{u"exportFormat"_s, u"exportCancel"_s, u"exportChoose"_s};
    QTest::newRow("settings") << u"settings"_s
                              << QStringList{u"language"_s, u"looksForUpdates"_s,
                                             u"checkForUpdates"_s, u"quit"_s, u"done"_s};
}

void TestMainWindow::keysReachEverything()
{
    QFETCH(QString, view);
    WindowDesk desk;
    desk.notes.notes = notes(3);
    if (view != "sign-in"_L1) {
        desk.useWithoutAccount();
    }
    if (view == "computer"_L1) {
        desk.computer.enterService();
    }
    desk.show();
    if (view == "notes"_L1 || view == "note"_L1 || view == "export"_L1) {
        desk.click("notes");
    } else if (view == "computer"_L1) {
        desk.click("computer");
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

void TestMainWindow::tellsOnceThatSettingsAreLost()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"file"_s)); // which is no folder
    QVERIFY(file.open(QIODevice::WriteOnly));
    SettingsDefaultsStore store(file.fileName() + u"/vellumo.ini"_s);
    store.setValue(u"key"_s, 1);
    QTRY_VERIFY(store.hasFailed());
    QCOMPARE(store.value(u"key"_s), 1);

    WindowDesk desk;
    desk.useWithoutAccount();
    desk.show();
    QVERIFY(!desk.item("unsavedSettingsWords"));
    desk.defaults.fail();
    QVERIFY(desk.item("unsavedSettingsWords"));
    desk.click("unsavedSettingsAccept");
    QVERIFY(!desk.item("unsavedSettingsWords"));
    desk.defaults.fail();
    QVERIFY(!desk.item("unsavedSettingsWords"));
}

void TestMainWindow::asksOnceWhetherToLookForUpdates()
{
    for (const bool isAllowed : {true, false}) {
        WindowDesk desk;
        desk.defaults.setValue(u"looksForUpdates"_s, {});
        desk.useWithoutAccount();
        desk.show();
        QVERIFY(desk.item("dailyUpdatesWords"));
        desk.click(isAllowed ? "dailyUpdatesAccept" : "dailyUpdatesDecline");
        QVERIFY(!desk.item("dailyUpdatesWords"));
        QCOMPARE(desk.defaults.value(u"looksForUpdates"_s), isAllowed);
        desk.click("settings");
        desk.click("looksForUpdates");
        QCOMPARE(desk.defaults.value(u"looksForUpdates"_s), !isAllowed);
    }
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
    for (const char *view : {"home", "notes", "insights", "computer", "settings"}) {
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
