// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The main window as a user sees it, without a desktop.

#include "ShownNotes.h"
#include "app/ActivationGuard.h"
#include "driver/Waiting.h"
#include "platform/ApplicationActivation.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "ui/OrdinaryWindow.h"
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

/// Shows this view, with three notes and a service.
void open(WindowDesk &desk, QLatin1StringView view, QSize size = {})
{
    desk.notes.notes = notes(3);
    desk.computer.enterService();
    if (view != "sign-in"_L1)
        desk.useWithoutAccount();
    desk.show();
    if (size.isValid())
        desk.window.window()->resize(size);
    QCoreApplication::processEvents();
    if (view == "notes"_L1 || view == "note"_L1 || view == "export"_L1)
        desk.click("notes");
    else if (view == "settings"_L1)
        QTest::keyClick(desk.window.window(), Qt::Key_Comma, Qt::ControlModifier);
    else if (view != "sign-in"_L1)
        desk.click(view.data());
    if (view == "export"_L1)
        desk.click("export");
    if (view == "note"_L1) {
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
    }
}

} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "UTC"); }
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void signsIn()
    {
        WindowDesk desk;
        desk.workspace.opensUrls = false;
        desk.show();
        QVERIFY(desk.window.window()->icon().pixmap(32).toImage().pixelColor(16, 16).alpha() > 0);
        QCOMPARE(desk.text("title"), u"Welcome to vellumo"_s);
        QVERIFY(!desk.item("error"));
        desk.click("signIn");
        QVERIFY(waitUntil([&] { return !desk.text("error").isEmpty(); }));
        QCOMPARE(desk.text("signIn"), u"Continue with Google"_s);

        desk.workspace.opensUrls = true;
        desk.click("signIn");
        QVERIFY(!desk.item("error"));
        QCOMPARE(desk.text("signIn"), u"Opening browser…"_s);
        QVERIFY(!desk.item("signIn")->isEnabled());
        desk.click("cancelSignIn");
        QCOMPARE(desk.text("signIn"), u"Continue with Google"_s);

        desk.click("signIn");
        desk.browser.handleCallback(u"vellumo:?refreshToken=r&uid=u&email=new@a.test"_s);
        QVERIFY(waitUntil([&] { return desk.http.answer(HttpError{HttpError::Kind::TimedOut}); }));
        QVERIFY(waitUntil([&] { return desk.item("account") != nullptr; }));
        QCOMPARE(desk.text("account"), u"new@a.test"_s);
        QCOMPARE(desk.text("syncState"), u"The sign-in service cannot be reached."_s);
        QVERIFY(!desk.item("signIn"));
        desk.click("notes");
        QCOMPARE(desk.sync.asked.last(), u"pull"_s);
    }

    void uploadsWhatIsWithheld()
    {
        WindowDesk desk;
        desk.storeSession();
        QVERIFY(waitUntil([&] { return desk.auth.isSignedIn(); }));
        desk.show();
        QCOMPARE(desk.text("syncState"), u"All notes uploaded"_s);
        QVERIFY(!desk.item("uploadNotes"));
        desk.sync.withheld = true;
        desk.sync.left = 3;
        Q_EMIT desk.sync.changed();
        QCOMPARE(desk.text("uploadNotes"), u"Upload 3 notes"_s);
        QVERIFY(!desk.item("syncNow"));
        desk.click("uploadNotes");
        QCOMPARE(desk.sync.asked.last(), u"upload"_s);
    }

    void goesOnWithoutAnAccount()
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

    void signingOutLeadsBack()
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
        desk.click("signOut");
        QVERIFY(desk.auth.isSignedIn());
        desk.click("settings");
        desk.host.confirmation.onAgreed(); // with a sheet open
        QVERIFY(desk.item("signIn") && !desk.item("settingsTitle"));
        desk.click("withoutAccount");
        QVERIFY(desk.item("greeting"));
        desk.click("notes");
        QCOMPARE(desk.text("count"), u"3"_s);
    }

    void opensANoteWhateverItShows()
    {
        WindowDesk desk;
        desk.notes.notes = notes(3);
        const QUuid id = desk.notes.notes.at(1).note.id;
        const auto isShown = [&] {
            return desk.text("sourceText") == desk.notes.notes.at(1).note.sourceText;
        };
        desk.window.showNote(id); // from the sign-in view
        QVERIFY(isShown());
        QVERIFY(QTest::qWaitForWindowActive(desk.window.window()));
        desk.click("notes");
        QTest::keyClick(desk.window.window(), '1');
        desk.click("export");
        desk.window.showNote(QUuid()); // is not kept
        QVERIFY(!isShown() && !desk.item("exportTitle"));
        desk.window.showNote(id);
        QVERIFY(isShown());
    }

    void switchesTheLanguageEverywhere()
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
        const QSet<QString> neutral{u"✦"_s,         u"vellumo"_s, u"English"_s, u"note 0"_s,
                                    u"explained"_s, u"a.test"_s,  u"1"_s};
        remaining.removeIf(
            [&](const QString &text) { return neutral.contains(text) || text.contains(u':'); });
        QCOMPARE(remaining, QStringList());
    }

    void keysReachEverything()
    {
        const QStringList bar{u"home"_s,     u"notes"_s,    u"insights"_s,
                              u"computer"_s, u"settings"_s, u"goToSignIn"_s};
        const std::pair<const char *, QStringList> rows[] = {
            {"sign-in", {u"signIn"_s, u"withoutAccount"_s}},
            {"home", bar + QStringList{u"allNotes"_s, u"latest"_s}},
            {"notes",
             bar
                 + QStringList{u"sort"_s, u"select"_s, u"export"_s, u"search"_s, u"grouping"_s,
                               u"rows"_s}},
            {"insights", bar + QStringList{u"days"_s, u"month"_s, u"place"_s}},
            {"computer",
             bar
                 + QStringList{u"withdraw"_s, u"mode"_s, u"addressInput"_s, u"modelInput"_s,
                               u"keyInput"_s, u"save"_s, u"tryOut"_s, u"forgetKey"_s,
                               u"startsAtLogin"_s, u"showsPill"_s, u"readsByCopying"_s,
                               u"details"_s, u"looksForUpdates"_s, u"checkForUpdates"_s,
                               u"quit"_s}},
            {"note",
             bar + QStringList{u"back"_s, u"delete"_s, u"openPage"_s, u"copy"_s, u"askFurther"_s}},
            {"export", {u"exportFormat"_s, u"exportCancel"_s, u"exportChoose"_s}},
            {"settings", {u"language"_s, u"toComputer"_s, u"done"_s}},
        };
        for (const auto &[view, reached] : rows) {
            WindowDesk desk;
            open(desk, QLatin1StringView(view));
            QSet<QString> met;
            for (int i = 0; i < 30; ++i) {
                desk.key(Qt::Key_Tab);
                QCoreApplication::processEvents(); // a sheet returns the keyboard focus
                const QQuickItem *item = desk.window.window()->activeFocusItem();
                while (item->objectName().isEmpty())
                    item = item->parentItem(); // the row of a list
                met << item->objectName();
            }
            QCOMPARE(met, QSet<QString>(reached.begin(), reached.end()));
        }
    }

    void warnsOnceThatSettingsAreLost()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"file"_s)); // not a folder
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

    void asksOnceForAChangeToTheDesktop()
    {
        const struct {
            bool isAllowed;
            bool isWritable;
        } rows[] = {{true, true}, {true, false}, {false, true}};
        for (const auto &[isAllowed, isWritable] : rows) {
            WindowDesk desk;
            SampleChange change;
            change.isWritable = isWritable;
            desk.computer.desktop.isPoor = true;
            desk.computer.desktop.change = &change;
            desk.useWithoutAccount();
            desk.show();
            QVERIFY(desk.text("reachWords").contains("keyboard shortcut"_L1));
            desk.click(isAllowed ? "reachAccept" : "reachDecline");
            if (isAllowed && !isWritable) {
                QVERIFY(desk.text("reachWords").contains("could not be changed"_L1));
                desk.click("reachAccept");
            }
            QVERIFY(!desk.item("reachWords"));
            using State = DesktopChange::State;
            QCOMPARE(change.now, isAllowed && isWritable ? State::Made : State::Possible);
            desk.click("computer");
            if (change.now == State::Made) {
                QVERIFY(desk.item("session")->property("title").toString().contains("Super"_L1));
                desk.item("changeReach")->forceActiveFocus();
                desk.key(Qt::Key_Space);
                QCOMPARE(change.now, State::Possible);
            }
            desk.computer.desktop.refresh();
            QVERIFY(!desk.item("reachWords"));
        }
    }

    void asksOnceWhetherToStartAtLogin()
    {
        for (const bool isWritable : {true, false}) {
            WindowDesk desk;
            desk.defaults.setValue(u"askedForLoginStart"_s, {});
            desk.useWithoutAccount();
            desk.computer.login.isWritable = isWritable;
            desk.show();
            desk.click("loginStartAccept");
            QVERIFY(!desk.item("loginStartWords"));
            QVERIFY(desk.defaults.value(u"askedForLoginStart"_s).toBool());
            QCOMPARE(desk.computer.login.now == LoginStart::State::On, isWritable);
            QCOMPARE(desk.item("computerPage") != nullptr, !isWritable); // which says why
        }
    }

    void asksOnceWhetherToLookForUpdates()
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
            desk.click("toComputer");
            const auto press = [&](const char *name) {
                desk.item(name)->forceActiveFocus();
                desk.key(Qt::Key_Space);
            };
            press("looksForUpdates");
            QCOMPARE(desk.defaults.value(u"looksForUpdates"_s), !isAllowed);
            press("checkForUpdates");
            press("quit");
            QCOMPARE(desk.chosen, (QStringList{u"updates"_s, u"quit"_s}));
        }
    }

    void fitsLargeText()
    {
        const LargeText large;
        for (const auto &language : {u"English"_s, u"Chinese"_s}) {
            for (const QSize size : {QSize(1008, 552), QSize(640, 440)}) {
                for (const auto view : {"sign-in"_L1, "home"_L1, "notes"_L1, "insights"_L1,
                                        "computer"_L1, "note"_L1, "export"_L1, "settings"_L1}) {
                    WindowDesk desk(language);
                    open(desk, view, size);
                    static_cast<void>(
                        desk.window.window()->grabWindow()); // lays out what has changed
                    const QStringList cut = cutButtons(desk.window.window()->contentItem());
                    QVERIFY2(cut.isEmpty(), qPrintable(view + u": "_s + cut.join(u", "_s)));
                    const QQuickItem *choose = desk.item("exportChoose");
                    QVERIFY(!choose
                            || choose->mapToScene({0, choose->height()}).y()
                                < desk.window.window()->height());
                }
            }
        }
    }

    void staysWhereTheUserPutsIt()
    {
        WindowDesk desk;
        const auto again = [&desk](const auto &then) {
            MainWindowController later(
                desk.engine,
                {desk.notes, desk.auth, nullptr, desk.defaults, desk.clock, desk.texts}, desk.host);
            later.show();
            then(*later.window());
        };
        desk.show();
        const QRect put(20, 30, 740, 520);
        desk.window.window()->setGeometry(put);
        desk.window.window()->close();
        again([&](QWindow &window) {
            QCOMPARE(window.geometry(), put);
            window.setPosition(40, 10);
        }); // quits while the window is shown
        again([&](QWindow &window) {
            QCOMPARE(window.geometry(), QRect({40, 10}, put.size()));
            window.setWindowStates(Qt::WindowMaximized);
        });
        again([](const QWindow &window) {
            QVERIFY(window.windowStates().testFlag(Qt::WindowMaximized));
        });
        settings::isMainWindowMaximized.set(desk.defaults, false);
        settings::mainWindowFrame.set(desk.defaults, put.translated(-5000, 0));
        again([&](const QWindow &window) {
            QCOMPARE(window.size(), put.size());
            QVERIFY(window.screen()->availableGeometry().contains(window.geometry()));
        });
    }

    void isHiddenWhileAPanelIsClicked()
    {
        WindowDesk unopened;
        unopened.window.hideForPanelActivation();
        QVERIFY(!unopened.window.hiddenForPanelActivation);
        const struct {
            Point pointer;
            bool isPanelVisible;
            bool isHidden;
        } rows[] = {{{150, 150}, true, true}, {{150, 150}, false, false}, {{50, 150}, true, false}};
        for (const auto &[pointer, isPanelVisible, isHidden] : rows) {
            WindowDesk desk;
            desk.show();
            ApplicationActivation activation;
            FakeFloatingWindows panels;
            FakeScreens screens;
            const ActivationGuard guard(activation, panels, screens, desk.window);
            const auto panel = panels.createPanel({}, {});
            panel->setFrame({100, 100, 100, 100});
            if (isPanelVisible)
                panel->orderFrontRegardless();
            screens.pointer = pointer;
            Q_EMIT activation.willBecomeActive();
            QCOMPARE(desk.window.hiddenForPanelActivation, isHidden);
            QCOMPARE(desk.window.window()->isVisible(), !isHidden);
            Q_EMIT activation.didBecomeActive();
            QVERIFY(!desk.window.hiddenForPanelActivation);
            QVERIFY(desk.window.window()->isVisible());
        }
    }
};

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
