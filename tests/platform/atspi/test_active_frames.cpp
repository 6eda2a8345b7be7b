// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Windows in front that do not report it.

#include "AtspiFixture.h"
#include "platform/atspi/ActiveFrames.h"
#include "platform/atspi/AtspiBus.h"
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestActiveFrames : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsWhatIsNotReported_data()
    {
        QTest::addColumn<QList<QJsonObject>>("windows");
        QTest::addColumn<bool>("isOfDesktop");
        QTest::addColumn<bool>("isFound");
        const QJsonObject active{{u"role"_s, 61}};
        const QJsonObject inactive{{u"role"_s, 61}, {u"inactive"_s, true}};
        QTest::newRow("active") << QList{inactive, active} << false << true;
        QTest::newRow("none") << QList{inactive} << false << false;
        QTest::newRow("ambiguous") << QList{active, active} << false << false;
        QTest::newRow("the desktop's") << QList{active} << true << false;
    }

    void findsWhatIsNotReported()
    {
        QFETCH(const QList<QJsonObject>, windows);
        QFETCH(const bool, isOfDesktop);
        QFETCH(const bool, isFound);
        SessionBus session;
        AtspiBus bus(session);
        session.open();
        bus.setWanted(true);
        ActiveFrames frames(bus, [&](qint64 /*process*/) { return isOfDesktop; });
        QVERIFY(waitUntil([&] { return frames.frontWindow().has_value(); }));
        Peer peer(windows);
        QVERIFY(peer.waitUntilReady());
        const auto isKnown = [&] {
            return frames.frontWindow()->isActive
                && frames.frontWindow()->processIdentifier == peer.id();
        };
        QCOMPARE(isFound ? waitUntil(isKnown) : waitUntil(isKnown, 1500ms), isFound);
    }
};

QTEST_GUILESS_MAIN(TestActiveFrames)
#include "test_active_frames.moc"
