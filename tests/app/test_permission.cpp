// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DataFolderLock.h"
#include "app/PermissionManager.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

class TestPermission : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesAreReportedOnceAfterTheyHaveSettled();
    void unsignalledChangeIsSeenByThePoll();
    void secondProcessIsRefused();
};

void TestPermission::changesAreReportedOnceAfterTheyHaveSettled()
{
    FakeCalls calls;
    FakeAccessibility accessibility(calls);
    FakeClock clock;
    QList<bool> reports;
    FakeWorkspace workspace;
    PermissionManager manager(accessibility, workspace, clock, true);
    manager.onChange = [&reports](bool isTrusted) { reports.append(isTrusted); };
    manager.startMonitoring();

    Q_EMIT accessibility.trustChanged(); // nothing has changed
    clock.advance(1s);
    QCOMPARE(reports, QList<bool>());

    accessibility.trusted = false;
    Q_EMIT accessibility.trustChanged();
    Q_EMIT accessibility.trustChanged();
    clock.advance(499ms);
    QCOMPARE(reports, QList<bool>());
    clock.advance(1ms);
    QCOMPARE(reports, QList<bool>{false});

    accessibility.trusted = true;
    Q_EMIT accessibility.trustChanged();
    clock.advance(1s);
    QCOMPARE(reports, (QList<bool>{false, true}));
    QVERIFY(manager.isTrusted());
}

void TestPermission::unsignalledChangeIsSeenByThePoll()
{
    FakeCalls calls;
    FakeAccessibility accessibility(calls);
    FakeClock clock;
    QList<bool> reports;
    FakeWorkspace workspace;
    PermissionManager manager(accessibility, workspace, clock, true);
    manager.onChange = [&reports](bool isTrusted) { reports.append(isTrusted); };
    manager.startMonitoring();
    accessibility.trusted = false;
    QTRY_COMPARE_WITH_TIMEOUT(reports, QList<bool>{false}, 4000);
}

void TestPermission::secondProcessIsRefused()
{
    const QTemporaryDir folder;
    DataFolderLock lock(folder.path());
    QVERIFY(lock.tryLock());
    QProcess second;
    second.start(QCoreApplication::applicationFilePath(), {u"--lock"_s, folder.path()});
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 3);
    QCOMPARE(second.readAllStandardOutput(),
             QByteArray::number(QCoreApplication::applicationPid()));
}

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--lock") == 0) {
        DataFolderLock lock(QString::fromLocal8Bit(argv[2]));
        if (!lock.tryLock()) {
            printf("%lld", lock.owner());
            return 3;
        }
        return 0;
    }
    TestPermission test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_permission.moc"
