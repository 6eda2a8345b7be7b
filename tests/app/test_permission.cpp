// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/PermissionManager.h"
#include "app/RevokedAlert.h"
#include "app/UnsavedNotes.h"
#include "capture/CoordinatorFakes.h"
#include "notes/NotesStore.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"

#include <QFile>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

class TestPermission : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesAreReportedOnce()
    {
        FakeCalls calls;
        FakeAccessibility accessibility(calls);
        FakeClock clock;
        QList<bool> reports;
        FakeWorkspace workspace;
        PermissionManager manager(accessibility, workspace, clock, true);
        manager.onChange = [&reports](bool isTrusted) { reports.append(isTrusted); };
        manager.startMonitoring();

        Q_EMIT accessibility.trustChanged(); // without a change
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

        accessibility.trusted = false; // without a signal
        QTRY_COMPARE_WITH_TIMEOUT(reports, (QList<bool>{false, true, false}), 4000);
    }

    /// As when the permission comes back while the alert is shown.
    void anAlertThatIsClosedOpensNoSettings()
    {
        QQmlEngine engine;
        prepareEngine(engine);
        const BilingualText texts([] { return u"English"_s; });
        RevokedAlert alert(engine, texts);
        const QSignalSpy closed(&alert, &RevokedAlert::closed);
        alert.close();
        QVERIFY(closed.isEmpty());
        alert.show();
        alert.close();
        QCOMPARE(closed.size(), 1);
        QCOMPARE(closed.constFirst().constFirst(), false);
    }

    void failedSaveIsSaidOnceAndTriedAgain()
    {
        const QTemporaryDir home;
        const QString folder = home.filePath(u"vellumo"_s);
        QFile obstacle(folder); // a file where the folder should be
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        NotesStore store(folder + u"/notes.json"_s);
        FakeResultPanel panel;
        const BilingualText texts([] { return u"English"_s; });
        UnsavedNotes unsaved({store, panel, texts}, folder);
        connect(&unsaved, &UnsavedNotes::noticed, this,
                [&panel](const IslandContent &notice) { panel.present(notice, {}, {}); });
        const auto saveOneMore = [&store] {
            store.add({QUuid::createUuid(), u"s"_s, {}, u"e"_s, 1, {}}, {u"k"_s, u"d"_s, {}});
        };
        const auto close = [&] {
            panel.dismiss();
            unsaved.panelClosed();
            QCoreApplication::processEvents();
        };

        // a note is saved when its panel closes, while the next one is already on screen
        panel.present(IslandContent::loading(u"x"_s), {}, {});
        saveOneMore();
        QCoreApplication::processEvents();
        QVERIFY(std::holds_alternative<IslandContent::Loading>(panel.shown->value));
        close();
        QVERIFY(panel.isOnScreen());
        const QString said = std::get<IslandContent::Demo>(panel.shown->value).result.explanation;
        QVERIFY2(said.startsWith(u"Notes cannot be saved: "_s), qPrintable(said));
        close();
        saveOneMore();
        close();
        QVERIFY(!panel.isOnScreen()); // once

        QVERIFY(obstacle.remove());
        QTRY_VERIFY(!store.saveFailure()); // as soon as it works
        QCOMPARE(NotesStore(folder + u"/notes.json"_s).noteCount(), 2);

        QVERIFY(QFile::rename(folder, folder + u"2"_s) && obstacle.open(QIODevice::WriteOnly));
        saveOneMore();
        QCoreApplication::processEvents();
        QVERIFY(panel.isOnScreen()); // another failure is reported again
    }
};

QTEST_MAIN(TestPermission)
#include "test_permission.moc"
