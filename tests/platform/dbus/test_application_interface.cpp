// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/ApplicationInterface.h"

#include "driver/Waiting.h"
#include "platform/dbus/ApplicationName.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

class TestApplicationInterface : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesWayToTheOwnerOfItsName()
    {
        QVERIFY(desktop_.registerService(ApplicationName::id));
        ApplicationInterface late;
        const QSignalSpy taken(&late, &ApplicationInterface::nameTaken);
        late.offerOn(QDBusConnection::sessionBus());
        QVERIFY(waitUntil([&] { return taken.size() == 1; }));
        QVERIFY(desktop_.unregisterService(ApplicationName::id));
    }

    void opensABoundedNumberOfAddresses()
    {
        ApplicationInterface interface;
        const QSignalSpy opened(&interface, &ApplicationInterface::openRequested);
        for (const qsizetype more : {0, 1}) {
            interface.open(QStringList(ApplicationInterface::maxUrls + more, u"vellumo://a"_s));
            QCoreApplication::processEvents();
            QCOMPARE(opened.size(), 1); // by the first call
        }
    }

    void losesNoRequestWhenItEnds()
    {
        ApplicationInterface interface;
        const QSignalSpy taken(&interface, &ApplicationInterface::nameTaken);
        const QSignalSpy activated(&interface, &ApplicationInterface::activationRequested);
        interface.offerOn(QDBusConnection::sessionBus());
        QVERIFY(waitUntil([&] { return activate() == QString(); }));
        QVERIFY(waitUntil([&] { return activated.size() == 1; }));

        interface.stop();
        QVERIFY(waitUntil(
            [&] { return !desktop_.interface()->isServiceRegistered(ApplicationName::id); }));
        QCOMPARE(activate(QDBusConnection::sessionBus().baseService()),
                 u"org.freedesktop.DBus.Error.ServiceUnknown"_s);
        QTest::qWait(0);
        QCOMPARE(activated.size(), 1);
        QCOMPARE(taken.size(), 0);
    }

private:
    /// Returns the name of the error, if any.
    [[nodiscard]] QString activate(const QString &service = ApplicationName::id)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, ApplicationName::path, ApplicationName::interface, u"Activate"_s);
        call << QVariantMap();
        return desktop_.call(call, QDBus::BlockWithGui).errorName();
    }

    QDBusConnection desktop_ =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"desktop"_s);
};

QTEST_GUILESS_MAIN(TestApplicationInterface)
#include "test_application_interface.moc"
