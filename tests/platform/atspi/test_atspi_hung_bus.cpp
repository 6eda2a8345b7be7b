// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "AtspiFixture.h"
#include <QElapsedTimer>
#include <QTest>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>

using namespace vellumo;
using namespace vellumo::test;

/// A session bus that lets clients connect and then says nothing.
class TestAtspiHungBus : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void freezesNothing();
};

void TestAtspiHungBus::freezesNothing()
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("bus")).toLocal8Bit();
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    QCOMPARE(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    QCOMPARE(listen(listener, 8), 0);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);

    QElapsedTimer time;
    time.start();
    const Reader reader(true);
    reader.accessibility->isProcessTrustedWithPrompt();
    reader.accessibility->refreshTrust();
    QVERIFY(!reader.accessibility->isProcessTrusted());
    QVERIFY(!reader.accessibility->focusedElement(1, QDeadlineTimer(100)));
    QVERIFY(!reader.accessibility->pageAddress(1, QDeadlineTimer(100)));
    QCOMPARE_LT(time.elapsed(), 2500); // a call that waits takes 3 s and more
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    TestAtspiHungBus test;
    const int failures = QTest::qExec(&test, argc, argv);
    std::fflush(stdout);
    std::_Exit(failures); // QtDBus would wait for the silent bus to the end
}

#include "test_atspi_hung_bus.moc"
