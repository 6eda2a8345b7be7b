// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CommandLine.h"
#include "app/DailyUpdates.h"
#include "app/DataFolderLock.h"
#include "app/UpdaterManager.h"
#include "app/WindowSystem.h"
#include "platform/Diagnostics.h"
#include "platform/ProgramEnvironment.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/AppConfig.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

namespace {

struct CountingUpdates : UpdateControlling {
    int looks = 0;
    int asked = 0;
    void checkForUpdates() override { ++asked; }
    void checkInBackground() override { ++looks; }
};

} // namespace

class TestStart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreUnderstood()
    {
        const QString url = u"vellumo://auth?x=%7E"_s;
        const struct {
            QStringList arguments;
            QString asked; // of the running instance; "exit N" or "nothing" for none
        } rows[] = {
            {{}, {}},
            {{u"--background"_s}, u"nothing"_s},
            {{u"-session"_s, u"1a2b_3"_s}, u"nothing"_s},
            {{u"--session"_s, u"1a2b"_s}, u"nothing"_s},
            {{u"--session=1a2b"_s}, u"nothing"_s},
            {{u"-session"_s, u"1a2b"_s, u"--notes"_s}, u"notes"_s},
            {{u"--explain"_s}, u"explain"_s},
            {{url, u"VELLUMO:b"_s}, url + u" VELLUMO:b"_s},
            {{u"--explain"_s, u"--notes"_s}, u"exit 1"_s},
            {{u"--notes"_s, url}, u"exit 1"_s},
            {{u"--doctor"_s, u"--quit"_s}, u"exit 1"_s},
            {{url, u"file:///x"_s}, u"exit 1"_s},
            {{u"notes.json"_s}, u"exit 1"_s},
            {{u"vellumo://[x y"_s}, u"vellumo://[x y"_s},
            {{url + QString(70'000, u'x')}, u"exit 1"_s},
            {{u"--explode"_s}, u"exit 1"_s},
            {{u"--version"_s, u"--quit"_s}, u"exit 0"_s},
        };
        for (const auto &[arguments, asked] : rows) {
            const auto parsed = CommandLine::parse(QStringList{u"vellumo"_s} + arguments);
            QString understood;
            if (const int *status = std::get_if<int>(&parsed)) {
                understood = u"exit %1"_s.arg(*status);
            } else {
                const auto &launch = std::get<LaunchRequest>(parsed);
                const InstanceRequest request = launch.forInstance();
                understood =
                    launch.wantsNothing() ? u"nothing"_s : request.action + request.urls.join(u' ');
            }
            QCOMPARE(understood, asked);
        }
    }

    void menuReachesTheUpdateController()
    {
        QQmlEngine engine;
        UpdaterManager manager(engine);
        auto updates = std::make_unique<CountingUpdates>();
        const CountingUpdates &seen = *updates;
        manager.controller = std::move(updates);
        manager.checkForUpdates();
        QCOMPARE(seen.asked, 1);
    }

    void looksForUpdatesOnceADay()
    {
        CountingUpdates updates;
        FakeDefaultsStore defaults;
        FakeClock clock;
        clock.now = 800000000;
        const auto agree = [&defaults](const QVariant &answer) {
            defaults.setValue(u"looksForUpdates"_s, answer);
        };
        const DailyUpdates daily(updates, defaults, clock);
        clock.advance(48h);
        QCOMPARE(updates.looks, 0); // was not asked
        agree(false);
        clock.advance(48h);
        QCOMPARE(updates.looks, 0);
        agree(true);
        clock.advance(10min);
        QCOMPARE(updates.looks, 1);
        clock.advance(23h);
        QCOMPARE(updates.looks, 1);
        clock.advance(2h);
        QCOMPARE(updates.looks, 2);
        {
            const DailyUpdates next(updates, defaults, clock); // of a later start
            clock.advance(2h);
            QCOMPARE(updates.looks, 2);
        }
        agree(false);
        clock.advance(48h);
        QCOMPARE(updates.looks, 2);
    }

    void windowSystemIsX11UnlessThereAreLayers()
    {
        const QString wayland = u"XDG_SESSION_TYPE=wayland"_s;
        const QString command = u"vellumo --doctor"_s;
        const struct {
            QStringList environment;
            QByteArray platform;
            QString remark = {}; // contains this
            bool isUsable = true;
            bool offersLayers = false;
        } rows[] = {
            {{u"DISPLAY=:0"_s}, "xcb"},
            {{wayland, u"DISPLAY=:0"_s}, "xcb", command},
            {{u"WAYLAND_DISPLAY=wayland-0"_s, u"DISPLAY=:0"_s}, "xcb", command},
            {{wayland, u"DISPLAY=:0"_s, u"QT_QPA_PLATFORM=wayland;xcb"_s}, "xcb", command},
            {{wayland}, {}, u"XWayland"_s, false},
            {{wayland, u"DISPLAY=:0"_s}, "wayland;xcb", command, true, true},
            {{wayland}, "wayland;xcb", command, true, true},
            {{wayland, u"DISPLAY=:0"_s, u"QT_QPA_PLATFORM=xcb"_s}, "xcb", command, true, true},
            {{u"DISPLAY=:0"_s}, "xcb", {}, true, true},
            {{}, {}, u"DISPLAY is not set"_s, false},
            {{u"QT_QPA_PLATFORM=offscreen"_s}, {}},
        };
        for (const auto &[environment, platform, remark, isUsable, offersLayers] : rows) {
            QProcessEnvironment variables;
            for (const QString &variable : environment)
                variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
            const WindowSystem system =
                chooseWindowSystem(variables, [offers = offersLayers] { return offers; });
            QCOMPARE(system.isUsable, isUsable);
            QCOMPARE(system.platform, platform);
            QVERIFY(system.remark.isEmpty() == remark.isEmpty() && system.remark.contains(remark));
            QVERIFY(!system.remark.contains(u'\n'));
        }
    }

    void ownVariablesAreTaken()
    {
        qputenv("OPENAI_API_KEY", " k1 ");
        qputenv("VELLUMO_CLIENT_TOKEN", "t1");
        AppConfig::takeFromEnvironment();
        QVERIFY(!qEnvironmentVariableIsSet("OPENAI_API_KEY"));
        QVERIFY(!qEnvironmentVariableIsSet("VELLUMO_CLIENT_TOKEN"));
        QCOMPARE(AppConfig({}).value(u"OPENAI_API_KEY"_s), u"k1"_s);
        QVERIFY(AppConfig::isInEnvironment(u"VELLUMO_CLIENT_TOKEN"_s));

        qputenv("HERE", "before");
        programEnvironment::setHere("HERE", "now");
        programEnvironment::setHere("HERE", "later");
        QCOMPARE(qgetenv("HERE"), "later");
        programEnvironment::restore("HERE");
        programEnvironment::restore("HERE");
        QCOMPARE(qgetenv("HERE"), "before");
    }

    void keyFilesAreForTheUserAlone()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Info.json"_s);
        constexpr auto own = QFile::ReadOwner | QFile::WriteOwner;
        const struct {
            QByteArray text;
            QFile::Permissions permissions;
            bool isExposed;
        } cases[] = {
            {R"({"OPENAI_API_KEY": "k"})", own, false},
            {R"({"OPENAI_API_KEY": "k"})", own | QFile::ReadGroup, true},
            {R"({"VELLUMO_CLIENT_TOKEN": "t"})", own | QFile::ReadOther, true},
            {R"({"OPENAI_API_KEY": " ", "VELLUMO_MODEL": "m"})", own | QFile::ReadOther, false},
        };
        for (const auto &each : cases) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(each.text) > 0);
            QVERIFY(file.setPermissions(each.permissions));
            file.close();
            QCOMPARE(!AppConfig::exposureOf(path).isEmpty(), each.isExposed);
        }
        QCOMPARE(AppConfig::exposureOf(folder.filePath(u"none"_s)), QString());
    }

    void logLinesAreOneLine()
    {
        QCOMPARE(logLine(u"a\r\nvellumo: b\u2028\x1B[2J\x7F\u0085\t|"_s),
                 u"a  vellumo: b  [2J   |"_s);
        QCOMPARE(logLine(u"\u202Eabc\u2066\u200F\u061C\uFEFF 潮 😀"_s), u"abc 潮 😀"_s);
    }

    void folderIsLockedWhateverLiesThere_data()
    {
        QTest::addColumn<QByteArray>("left"); // by an earlier run
        QTest::addColumn<bool>("canWrite");
        QTest::addColumn<bool>("isRemoved"); // while the folder is locked
        QTest::newRow("nothing") << QByteArray() << true << false;
        QTest::newRow("removed by others") << QByteArray() << true << true;
        QTest::newRow("a crash here") << QByteArray("4194305\nvellumo\n") << true << false;
        QTest::newRow("no room for a file") << QByteArray() << false << false;
    }

    void folderIsLockedWhateverLiesThere()
    {
        QFETCH(QByteArray, left);
        QFETCH(bool, canWrite);
        QFETCH(bool, isRemoved);
        const QTemporaryDir home;
        const QString folder = home.filePath(u"vellumo"_s);
        QFile file(folder + u"/lock"_s);
        if (!canWrite) {
            QVERIFY(QDir().mkpath(file.fileName())); // a folder of that name
        } else if (!left.isNull()) {
            QVERIFY(QDir().mkpath(folder) && file.open(QIODevice::WriteOnly));
            QCOMPARE(file.write(left), left.size());
            file.close();
        }
        std::optional<DataFolderLock> first(folder);
        QVERIFY(first->tryLock() && first->tryLock());
        DataFolderLock second(folder);
        if (isRemoved) {
            QVERIFY(file.remove());
        } else if (canWrite) {
            QCOMPARE(second.owner(), QCoreApplication::applicationPid());
        }
        QVERIFY(!second.tryLock());
        QSocketNotifier notifier(second.waitForLock(), QSocketNotifier::Read);
        QSignalSpy news(&notifier, &QSocketNotifier::activated);
        QVERIFY(!second.tryLock());
        first.reset();
        QVERIFY(news.wait());
        notifier.setEnabled(false);
        QVERIFY(second.tryLock());
        QVERIFY(QFile::exists(file.fileName()));
        DataFolderLock third(folder);
        QVERIFY(!third.tryLock());
    }
};

QTEST_GUILESS_MAIN(TestStart)
#include "test_start.moc"
