// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/EmbeddingTray.h"
#include "desktop/ProgramTest.h"
#include "desktop/TrayHost.h"
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QLocalServer>
#include <algorithm>
#include <csignal>
#include <vector>

using namespace vellumo::test;

/// The built program as seen by the desktop's panels and by other programs.
class TestShell : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void iconIsThereWheneverAHostIs()
    {
        auto host = std::make_unique<TrayHost>();
        QVERIFY(vellumo_->start());
        QVERIFY(host->waitForItem());
        for (int restart = 0; restart < 2; ++restart) {
            host.reset();
            host = std::make_unique<TrayHost>();
            QVERIFY(host->waitForItem());
        }
        QCOMPARE(host->items().size(), 1);
        QCOMPARE(host->property(u"Title"_s).toString(), u"vellumo"_s);
        QVERIFY(vellumo_->process().end() == 0);
    }

    void iconHasAMenu()
    {
        QVERIFY(vellumo_->start());
        TrayHost host; // later than the program
        QVERIFY(host.waitForItem());
        const QList<TrayHost::MenuItem> menu = host.menu();
        QStringList labels;
        for (const auto &item : menu)
            labels.append(item.label);
        QCOMPARE(labels,
                 (QStringList{
                     u"vellumo is running"_s, {}, u"Check for Updates…"_s, {}, u"Quit vellumo"_s}));
        QVERIFY(!menu[0].isEnabled);
        QCOMPARE(menu[4].shortcut, (QStringList{u"Control"_s, u"Q"_s}));

        for (int time = 0; time < 2; ++time) { // each time it is asked
            host.choose(menu[2].id);
            QVERIFY(vellumo_->waitForText(u"heading: Updates unavailable"_s));
            QVERIFY(
                vellumo_->waitForText(u"Automatic updates are disabled in development builds."_s));
            QVERIFY(waitUntil([this] { return ordinaryWindow().has_value(); }));
            QVERIFY(desktop_.activate(ordinaryWindow().value_or(0)));
            desktop_.tap(Key::Escape);
            QVERIFY(waitUntil([this] { return !ordinaryWindow(); }));
        }

        QVERIFY(!vellumo_->panelText().contains("Welcome to vellumo"_L1));
        host.activate();
        QVERIFY(vellumo_->waitForText(u"button: Settings"_s));

        host.choose(menu[4].id);
        QVERIFY(vellumo_->process().waitForEnd(5s));
        QCOMPARE(vellumo_->process().exitCode(), 0);
    }

    void olderTrayHasTheIcon_data()
    {
        QTest::addColumn<bool>("isLate");
        QTest::newRow("while the program waits for a newer one") << false;
        QTest::newRow("later") << true;
    }

    void olderTrayHasTheIcon()
    {
        QFETCH(bool, isLate);
        QVERIFY(vellumo_->start());
        if (isLate)
            QTest::qWait(3500); // it waits for 3 s
        EmbeddingTray tray; // later than the program
        const auto icon = tray.waitForIcon();
        QVERIFY(icon);
        const auto isDrawn = [&] {
            const QImage shown = desktop_.pixels(*icon);
            for (int i = 0; i < shown.width() * shown.height(); ++i) {
                if (qGray(shown.pixel(i % shown.width(), i / shown.width()))
                    != qGray(shown.pixel(0, 0)))
                    return true;
            }
            return false;
        };
        QVERIFY(waitUntil(isDrawn));
        desktop_.click(icon->center());
        QVERIFY(vellumo_->waitForText(u"button: Settings"_s));
    }

    void iconCanBeSeenOnLightAndDarkPanels()
    {
        QVERIFY(vellumo_->start());
        TrayHost host;
        QVERIFY(host.waitForItem());
        // the colour of the icon's opaque pixels
        const auto ink = [&host] {
            const QImage icon = host.icon();
            std::optional<QRgb> found;
            for (int i = 0; i < icon.width() * icon.height(); ++i) {
                const QRgb pixel = icon.pixel(i % icon.width(), i / icon.width());
                if (qAlpha(pixel) == 255)
                    found = pixel;
            }
            return found;
        };
        constexpr QRgb black = qRgb(0, 0, 0);
        constexpr QRgb white = qRgb(255, 255, 255);
        QVERIFY(waitUntil([&] { return ink() == black; }));
        for (const auto &[scheme, expected] : {std::pair(1U, white), std::pair(2U, black)}) {
            QDBusMessage change = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                             u"org.freedesktop.portal.Settings"_s,
                                                             u"SettingChanged"_s);
            change << u"org.freedesktop.appearance"_s << u"color-scheme"_s
                   << QVariant::fromValue(QDBusVariant(scheme));
            QVERIFY(QDBusConnection::sessionBus().send(change));
            QVERIFY(waitUntil([&] { return ink() == expected; }));
        }
    }

    void ordinaryWindowsTakeTheKeysOfTheMenu()
    {
        QVERIFY(vellumo_->start({}));
        QVERIFY(waitUntil([this] { return ordinaryWindow().has_value(); }, 10s));
        const WindowId window = ordinaryWindow().value_or(0);
        QVERIFY(desktop_.activate(window));
        desktop_.chord(Key::ControlLeft, Key::H);
        QVERIFY(waitUntil([&] { return !desktop_.isVisible(window); }));
        QVERIFY(desktop_.activate(window));
        // keys may go astray until a window that comes back has the keyboard
        const auto quits = [this] {
            desktop_.chord(Key::ControlLeft, Key::Q);
            return vellumo_->process().waitForEnd(500ms);
        };
        QVERIFY(waitUntil(quits, 10s));
        QCOMPARE(vellumo_->process().exitCode(), 0);
    }

    void laterStartsHandOver()
    {
        QVERIFY(vellumo_->start());
        for (const QStringList &arguments :
             {QStringList{}, {u"--background"_s}, {u"vellumo://auth/callback?code=1"_s}})
            QCOMPARE(vellumo_->startAgain(arguments).value_or(-1), 0);

        QCOMPARE(vellumo_->startAgain({u"--explain"_s}), 0);
        QVERIFY(vellumo_->waitForPanel());
        QCOMPARE(vellumo_->startAgain({u"--focus"_s}), 0);
        QVERIFY(waitUntil([this] { return desktop_.activeWindow() == vellumo_->panel(); }));
        QCOMPARE(vellumo_->startAgain({u"--explain"_s}), 0);
        QVERIFY(vellumo_->waitForNoPanel());

        // the next one starts while the first still ends
        QCOMPARE(vellumo_->startAgain({u"--quit"_s}), 0);
        Program next(desktop_, QStringLiteral(VELLUMO_PROGRAM),
                     vellumo_->folder().section(u'/', -1));
        QVERIFY2(next.start(), qPrintable(next.process().standardOutput()));
        QVERIFY(vellumo_->process().waitForEnd(5s));
        QCOMPARE(vellumo_->process().exitCode(), 0);
    }

    void opensNothingInTheBackground()
    {
        vellumo_->setSetting(u"accessibilityConsent"_s, u"false"_s);
        QVERIFY(vellumo_->start({u"-session"_s, u"10a2b3c4"_s}));
        for (const QStringList &arguments :
             {QStringList{u"--background"_s}, {u"-session"_s, u"10a2b3c4"_s}})
            QCOMPARE(vellumo_->startAgain(arguments), 0);
        QCOMPARE(vellumo_->startAgain({u"--explain"_s}),
                 0); // requests of the others came before it
        QVERIFY(vellumo_->waitForPanel());
        const auto panel = vellumo_->panel();
        QList<WindowId> others = desktop_.windows(u"vellumo"_s);
        others.removeIf([&](WindowId window) {
            return window == panel || desktop_.geometry(window).height() < 100;
        });
        QCOMPARE(others, QList<WindowId>());
        QVERIFY(vellumo_->dismissPanel());
        QCOMPARE(vellumo_->startAgain({}), 0); // now the window, and the question
        QVERIFY(vellumo_->waitForText(u"button: Settings"_s));
        QVERIFY(waitUntil([&] {
            QList<WindowId> shown = desktop_.windows(u"vellumo"_s);
            shown.removeIf(
                [&](WindowId window) { return desktop_.geometry(window).height() < 100; });
            return shown.size() == 2;
        }));
    }

    void reportsOnTheSession()
    {
        const auto run = [this](int expected) {
            const auto reporter = vellumo_->another({u"--doctor"_s});
            if (!reporter->launch() || !reporter->waitForEnd(10s))
                return u"no end"_s;
            return reporter->exitCode() == expected ? reporter->standardOutput()
                                                    : u"exit %1"_s.arg(reporter->exitCode());
        };
        const QString alone = run(0);
        QVERIFY2(alone.contains("not running"_L1), qPrintable(alone));
        // a file of notes that it neither uses nor changes
        const QString data = vellumo_->folder() + u"/data/vellumo"_s;
        QVERIFY(QDir().mkpath(data));
        QFile notes(data + u"/notes.json"_s);
        const QByteArray place =
            R"({"context": {"key": "k", "displayName": "d", "source": "filePath"}, "notes": []})";
        const QByteArray ambiguous = "{\"buckets\": [" + place + "," + place + "]}";
        QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write(ambiguous) > 0);
        notes.close();
        QVERIFY(vellumo_->launch() && vellumo_->waitForText(u"Your notes cannot be opened"_s));
        QVERIFY(vellumo_->click(u"Quit"_s) && vellumo_->process().waitForEnd(5s));
        QVERIFY(notes.open(QIODevice::ReadOnly) && notes.readAll() == ambiguous && notes.remove());
        QVERIFY(vellumo_->start());
        const QString running = run(0);
        QVERIFY2(!running.contains("not running"_L1)
                     && running.contains("ok       Double-tap: Everywhere"_L1),
                 qPrintable(running));
        QVERIFY(vellumo_->process().isRunning());
        vellumo_->setSetting(u"accessibilityConsent"_s, u"false"_s);
        QCOMPARE(vellumo_->startAgain({u"--quit"_s}), 0);
        QVERIFY(vellumo_->process().waitForEnd(5s));
        const QString refused = run(1);
        QVERIFY2(refused.contains("FAILS    Permission"_L1), qPrintable(refused));
    }

    /// The notice follows the panel whose note it is about.
    void saysThatANoteCannotBeSaved()
    {
        const QString data = vellumo_->folder() + u"/data/vellumo"_s;
        QVERIFY(QDir().mkpath(data));
        vellumo_->setWrapper({u"unshare"_s, u"--mount"_s, u"sh"_s, u"-c"_s,
                              u"mount --bind \"$0\" \"$0\" && mount -o remount,bind,ro \"$0\" "
                              "&& exec \"$@\""_s,
                              data});
        QVERIFY(editor_->open());
        QVERIFY(vellumo_->start());
        QVERIFY(editor_->selectAll());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForAnswer());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForText(u"Notes cannot be saved"_s));
    }

    void startsWithWhatIsAsked()
    {
        QCOMPARE(vellumo_->startAgain({u"--quit"_s}), 0); // nothing to end
        QVERIFY(vellumo_->start({u"--explain"_s}));
        QVERIFY(vellumo_->waitForPanel());
    }

    void manyStartsLeaveOne()
    {
#ifdef __SANITIZE_ADDRESS__
        constexpr size_t starts = 20;
#else
        constexpr size_t starts = 100;
#endif
        std::vector<std::unique_ptr<Application>> processes(starts);
        for (auto &process : processes) {
            process = vellumo_->another();
            QVERIFY(process->launch());
        }
        const auto running = [&] {
            return std::count_if(processes.begin(), processes.end(),
                                 [](const auto &process) { return process->isRunning(); });
        };
        QVERIFY(waitUntil([&] { return running() == 1; }, 60s));
        for (const auto &process : processes) {
            if (!process->isRunning())
                QCOMPARE(process->exitCode(), 0);
        }
        QCOMPARE(vellumo_->startAgain({u"--quit"_s}), 0);
        QVERIFY(waitUntil([&] { return running() == 0; }));
    }

    void refusesCallsThatDoNotFit()
    {
        const QString secret = u"vellumo://auth/secret"_s;
        const QString invalid = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
        const QString unknown = u"org.freedesktop.DBus.Error.UnknownMethod"_s;
        const QVariantMap none;
        const struct {
            const char *name;
            QString method;
            QVariantList arguments;
            QString error = {}; // empty when the call is accepted without an effect
        } rows[] = {
            {"a number for the data", u"Activate"_s, {7}, unknown},
            {"one address for the list", u"Open"_s, {secret, none}, unknown},
            {"no such method", u"Erase"_s, {}, unknown},
            {"no such action", u"ActivateAction"_s, {secret, QVariantList{}, none}, invalid},
            {"an action with a parameter",
             u"ActivateAction"_s,
             {u"quit"_s, QVariantList{secret}, none},
             invalid},
            {"a huge address",
             u"Open"_s,
             {QStringList{secret + QString(5'000'000, u'x')}, none},
             invalid},
            {"many addresses", u"Open"_s, {QStringList(10'000, secret), none}, invalid},
            {"other schemes",
             u"Open"_s,
             {QStringList{u"file:///etc/secret"_s, u"javascript:secret"_s, u"secret"_s, {}}, none}},
            {"malformed addresses",
             u"Open"_s,
             {QStringList{u"vellumo://[secret"_s, u"vellumo:%%%"_s, u"vellumo://\u202E a"_s},
              none}},
        };
        QVERIFY(vellumo_->start());
        const QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(waitUntil([&] {
            return bus.interface()->isServiceRegistered(u"app.vellumo.Vellumo"_s).value();
        }));
        for (const auto &row : rows) {
            QDBusMessage call =
                QDBusMessage::createMethodCall(u"app.vellumo.Vellumo"_s, u"/app/vellumo/Vellumo"_s,
                                               u"org.freedesktop.Application"_s, row.method);
            call.setArguments(row.arguments);
            const QDBusMessage answer = bus.call(call, QDBus::Block, 10000);
            QVERIFY2(answer.errorName() == row.error, row.name);
            QVERIFY2(!answer.errorMessage().contains("secret"_L1), row.name);
        }
        QCOMPARE(vellumo_->startAgain(), 0);
        QVERIFY(!vellumo_->report().contains("secret"_L1));
    }

    void doesNotWaitForAHungBus()
    {
        QLocalServer bus; // accepts connections and never answers
        QVERIFY(bus.listen(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/hung-bus"_s));
        const QString address = u"unix:path="_s + bus.fullServerName();
        vellumo_->setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, address);
        QVERIFY(vellumo_->start());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForPanel(2s)); // a call that waits takes 3 s and more
        vellumo_->process().signal(SIGTERM);
        QVERIFY(vellumo_->process().waitForEnd(5s));
        QCOMPARE(vellumo_->process().exitCode(), 0);
    }

    void saysThatTheNotesAreInUse()
    {
        QVERIFY(vellumo_->start());
        QVERIFY(
            waitUntil([this] { return !desktop_.windows(u"vellumo"_s).isEmpty(); })); // the pill
        const QList<WindowId> before = desktop_.windows(u"vellumo"_s);
        for (const bool isSilent : {true, false}) {
            const auto second =
                vellumo_->another(isSilent ? Program::inBackground() : QStringList());
            second->setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, u"disabled:"_s);
            QVERIFY(second->launch());
            const auto added = [&] {
                QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
                windows.removeIf([&](WindowId window) { return before.contains(window); });
                return windows;
            };
            if (!isSilent) {
                QVERIFY(waitUntil([&] { return !added().isEmpty(); }));
                QVERIFY(waitUntil([&] { return desktop_.activate(added().value(0)); }));
                const QString pictures = qEnvironmentVariable("VELLUMO_TEST_PICTURES");
                if (!pictures.isEmpty())
                    desktop_.pixels().save(pictures + u"/in-use.png"_s);
                desktop_.tap(Key::Escape);
            }
            QVERIFY(second->waitForEnd(20s));
            QCOMPARE(second->exitCode(), 1);
            QVERIFY(added().isEmpty());
            const QString said = second->standardOutput() + second->errorOutput();
            QVERIFY2(said.startsWith("vellumo: "_L1) && said.count(u'\n') == 1, qPrintable(said));
        }
    }

private:
    /// Returns a window of the program that is not the pill.
    [[nodiscard]] std::optional<WindowId> ordinaryWindow() const
    {
        const QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
        const auto found = std::find_if(windows.begin(), windows.end(), [this](WindowId window) {
            return desktop_.geometry(window).height() >= 100;
        });
        return found != windows.end() ? std::optional(*found) : std::nullopt;
    }
};

QTEST_MAIN(TestShell)
#include "test_shell.moc"
