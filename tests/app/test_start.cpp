// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CommandLine.h"
#include "app/DailyUpdates.h"
#include "app/DataFolderLock.h"
#include "app/WindowSystem.h"
#include "platform/Diagnostics.h"
#include "platform/ProgramEnvironment.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/AppConfig.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

class TestStart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreUnderstood_data();
    void argumentsAreUnderstood();
    void looksForUpdatesOnceADay();
    void windowSystemIsX11WhereverItCan_data();
    void windowSystemIsX11WhereverItCan();
    void ownVariablesAreTaken();
    void keyFilesAreForTheUserAlone();
    void logLinesAreOneLine();
    void folderIsLockedWhateverLiesThere_data();
    void folderIsLockedWhateverLiesThere();
};

void TestStart::argumentsAreUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("asked"); // of the running instance; "exit N" or "nothing" for none
    const QString url = u"vellumo://auth?x=%7E"_s;
    QTest::newRow("none") << QStringList{} << QString();
    QTest::newRow("in the background") << QStringList{u"--background"_s} << u"nothing"_s;
    QTest::newRow("by a session manager")
        << QStringList{u"-session"_s, u"1a2b_3"_s} << u"nothing"_s;
    QTest::newRow("by another") << QStringList{u"--session"_s, u"1a2b"_s} << u"nothing"_s;
    QTest::newRow("by a third") << QStringList{u"--session=1a2b"_s} << u"nothing"_s;
    QTest::newRow("session and action")
        << QStringList{u"-session"_s, u"1a2b"_s, u"--notes"_s} << u"notes"_s;
    QTest::newRow("an action") << QStringList{u"--explain"_s} << u"explain"_s;
    QTest::newRow("addresses") << QStringList{url, u"VELLUMO:b"_s} << url + u" VELLUMO:b"_s;
    QTest::newRow("two actions") << QStringList{u"--explain"_s, u"--notes"_s} << u"exit 1"_s;
    QTest::newRow("action and address") << QStringList{u"--notes"_s, url} << u"exit 1"_s;
    QTest::newRow("another scheme") << QStringList{url, u"file:///x"_s} << u"exit 1"_s;
    QTest::newRow("a file") << QStringList{u"notes.json"_s} << u"exit 1"_s;
    QTest::newRow("a malformed address") << QStringList{u"vellumo://[x y"_s} << u"vellumo://[x y"_s;
    QTest::newRow("a huge address") << QStringList{url + QString(70'000, u'x')} << u"exit 1"_s;
    QTest::newRow("unknown") << QStringList{u"--explode"_s} << u"exit 1"_s;
    QTest::newRow("version") << QStringList{u"--version"_s, u"--quit"_s} << u"exit 0"_s;
}

void TestStart::argumentsAreUnderstood()
{
    QFETCH(QStringList, arguments);
    const auto parsed = CommandLine::parse(QStringList{u"vellumo"_s} + arguments);
    QString asked;
    if (const int *status = std::get_if<int>(&parsed)) {
        asked = u"exit %1"_s.arg(*status);
    } else {
        const auto &launch = std::get<LaunchRequest>(parsed);
        const InstanceRequest request = launch.forInstance();
        asked = launch.wantsNothing() ? u"nothing"_s : request.action + request.urls.join(u' ');
    }
    QTEST(asked, "asked");
}

namespace {

struct CountingUpdates : UpdateControlling {
    int looks = 0;
    void checkForUpdates() override { }
    void checkInBackground() override { ++looks; }
};

} // namespace

void TestStart::looksForUpdatesOnceADay()
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

void TestStart::windowSystemIsX11WhereverItCan_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<bool>("isUsable");
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<QString>("remarkHas");
    const QByteArray keep;
    const QString wayland = u"XDG_SESSION_TYPE=wayland"_s;
    QTest::newRow("X11") << QStringList{u"DISPLAY=:0"_s} << true << QByteArray("xcb") << QString();
    QTest::newRow("XWayland") << QStringList{wayland, u"DISPLAY=:0"_s} << true << QByteArray("xcb")
                              << u"vellumo --explain"_s;
    QTest::newRow("a session that does not tell its type")
        << QStringList{u"WAYLAND_DISPLAY=wayland-0"_s, u"DISPLAY=:0"_s} << true << QByteArray("xcb")
        << u"vellumo --explain"_s;
    QTest::newRow("Qt told to use Wayland")
        << QStringList{wayland, u"DISPLAY=:0"_s, u"QT_QPA_PLATFORM=wayland;xcb"_s} << true
        << QByteArray("xcb") << u"vellumo --explain"_s;
    QTest::newRow("Wayland alone") << QStringList{wayland} << false << keep << u"XWayland"_s;
    QTest::newRow("nothing") << QStringList{} << false << keep << u"DISPLAY is not set"_s;
    QTest::newRow("for tests") << QStringList{u"QT_QPA_PLATFORM=offscreen"_s} << true << keep
                               << QString();
}

void TestStart::windowSystemIsX11WhereverItCan()
{
    QFETCH(QStringList, environment);
    QFETCH(QString, remarkHas);
    QProcessEnvironment variables;
    for (const QString &variable : std::as_const(environment)) {
        const qsizetype equals = variable.indexOf(u'=');
        variables.insert(variable.left(equals), variable.mid(equals + 1));
    }
    const WindowSystem system = chooseWindowSystem(variables);
    QTEST(system.isUsable, "isUsable");
    QTEST(system.platform, "platform");
    QVERIFY(system.remark.isEmpty() == remarkHas.isEmpty() && system.remark.contains(remarkHas));
    QVERIFY(!system.remark.contains(u'\n'));
}

void TestStart::ownVariablesAreTaken()
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

void TestStart::keyFilesAreForTheUserAlone()
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

void TestStart::logLinesAreOneLine()
{
    QCOMPARE(logLine(u"a\r\nvellumo: b\u2028\x1B[2J\x7F\u0085\t|"_s), u"a  vellumo: b  [2J   |"_s);
    QCOMPARE(logLine(u"\u202Eabc\u2066\u200F\u061C\uFEFF 潮 😀"_s), u"abc 潮 😀"_s);
}

void TestStart::folderIsLockedWhateverLiesThere_data()
{
    QTest::addColumn<QByteArray>("left"); // by an earlier run
    QTest::addColumn<bool>("canWrite");
    QTest::addColumn<bool>("isRemoved"); // while the folder is locked
    QTest::newRow("nothing") << QByteArray() << true << false;
    QTest::newRow("removed by others") << QByteArray() << true << true;
    QTest::newRow("empty") << QByteArray("") << true << false;
    QTest::newRow("a crash here") << QByteArray("4194305\nvellumo\n") << true << false;
    QTest::newRow("a crash elsewhere")
        << QByteArray("1\nvellumo\nelsewhere\n12345\n") << true << false;
    QTest::newRow("no room for a file") << QByteArray() << false << false;
}

void TestStart::folderIsLockedWhateverLiesThere()
{
    QFETCH(QByteArray, left);
    QFETCH(bool, canWrite);
    QFETCH(bool, isRemoved);
    const QTemporaryDir home;
    const QString folder = home.filePath(u"vellumo"_s);
    QFile file(folder + u"/lock"_s);
    if (!canWrite) {
        QVERIFY(QDir().mkpath(file.fileName())); // stands in its place
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

QTEST_GUILESS_MAIN(TestStart)
#include "test_start.moc"
