// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// A desktop whose session bus is missing, knows no accessibility, or hangs: the arguments of the
// desktop, and VELLUMO_TEST_HUNG_BUS, decide which.

#include "AtspiFixture.h"
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace vellumo;
using namespace vellumo::test;

namespace {

/// A bus that lets clients connect and then says nothing.
void replaceBusBySilentOne(const QString &path)
{
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, qPrintable(path), sizeof address.sun_path);
    QCOMPARE(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    QCOMPARE(listen(listener, 8), 0);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.toLocal8Bit());
}

} // namespace

class TestAtspiAbsent : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void doesLess();
};

void TestAtspiAbsent::doesLess()
{
    const QTemporaryDir folder;
    const bool isHung = qEnvironmentVariableIsSet("VELLUMO_TEST_HUNG_BUS");
    if (isHung) {
        replaceBusBySilentOne(folder.filePath(QStringLiteral("bus")));
    }
    const int standardOutput = dup(STDOUT_FILENO);
    QFile output(folder.filePath(QStringLiteral("output")));
    QVERIFY(output.open(QIODevice::ReadWrite));
    std::fflush(stdout);
    dup2(output.handle(), STDOUT_FILENO);
    const auto restore = qScopeGuard([&] {
        std::fflush(stdout);
        dup2(standardOutput, STDOUT_FILENO);
    });

    QElapsedTimer time;
    time.start();
    const Reader reader(true);
    reader.accessibility->isProcessTrustedWithPrompt();
    reader.accessibility->refreshTrust();
    QVERIFY2(time.elapsed() < 150, qPrintable(QString::number(time.elapsed())));
    QVERIFY(!waitUntil([&] { return reader.accessibility->isProcessTrusted(); },
                       std::chrono::milliseconds(400)));
    QVERIFY(!reader.accessibility->focusedElement(1, QDeadlineTimer(100)));
    QVERIFY(!reader.accessibility->pageAddress(1, QDeadlineTimer(100)));

    std::fflush(stdout);
    QFile printed(output.fileName()); // of its own, so that the place of writing stays
    QVERIFY(printed.open(QIODevice::ReadOnly));
    const QByteArray complaint = printed.readAll();
    QVERIFY(complaint.count('\n') <= 1);
    QVERIFY(complaint.isEmpty() || complaint.startsWith("vellumo: "));
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    TestAtspiAbsent test;
    const int failures = QTest::qExec(&test, argc, argv);
    std::fflush(stdout);
    std::_Exit(failures); // QtDBus would wait for the silent bus to the end
}

#include "test_atspi_absent.moc"
