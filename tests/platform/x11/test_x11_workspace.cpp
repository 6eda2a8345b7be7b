// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "PeerProcess.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionHistory.h"
#include "platform/x11/X11Windows.h"
#include "platform/x11/X11Workspace.h"
#include "support/Desktop.h"
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;
using namespace vellumo::test;

/// Run twice: on a desktop with a window manager and on one without.
class TestX11Workspace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void followsForeignProcesses();
    void ownWindowsChangeNothing();
    void emptyDesktop();
    void opensOnlyWebAddresses();
    void aPublicationIsOverWithItsSelection();

private:
    struct Session;
    [[nodiscard]] std::unique_ptr<Session> session();

    Desktop desktop_;
    QTemporaryDir applications_;
    X11Problems problems_;
};

struct TestX11Workspace::Session {
    Session(X11Problems &problems, const QString &applications)
        : connection(problems)
        , windows(connection)
        , workspace(connection, windows, DesktopEntries({applications}, {}))
    {
    }
    [[nodiscard]] qint64 frontmost()
    {
        const auto application = workspace.frontmostApplication();
        return application ? application->processIdentifier : 0;
    }
    X11Connection connection;
    X11Windows windows;
    X11Workspace workspace;
    QSignalSpy activations{&workspace, &Workspace::didActivateApplication};
};

std::unique_ptr<TestX11Workspace::Session> TestX11Workspace::session()
{
    return std::make_unique<Session>(problems_, applications_.path());
}

void TestX11Workspace::initTestCase()
{
    QFile file(applications_.filePath(u"org.example.Reader.desktop"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=The Reader\nStartupWMClass=reader\n");
}

void TestX11Workspace::init()
{
    QVERIFY(desktop_.isOpen());
    const auto noWindowLeft = [this] { return desktop_.windows(u"reader"_s).isEmpty(); };
    QVERIFY(QTest::qWaitFor(noWindowLeft));
}

void TestX11Workspace::followsForeignProcesses()
{
    PeerProcess first({u"window"_s, u"reader"_s, u"Reader-main"_s});
    QVERIFY(desktop_.activate(first.window()));
    const auto s = session();
    QCOMPARE(s->workspace.frontmostApplication(),
             (RunningApplication{first.processId(), u"The Reader"_s, u"org.example.Reader"_s}));
    QCOMPARE(s->workspace.windowTitle(first.processId()), u"title of reader"_s);

    PeerProcess second({u"window"_s, u"other-reader"_s, u"Other-Reader"_s});
    QVERIFY(desktop_.activate(second.window()));
    QVERIFY(QTest::qWaitFor([&] { return !s->activations.isEmpty(); }));
    QCOMPARE(s->activations.size(), 1); // nothing for the one that was there before
    QCOMPARE(s->activations[0][0].toLongLong(), second.processId());
    QCOMPARE(s->workspace.frontmostApplication(),
             (RunningApplication{second.processId(), u"Other-Reader"_s, std::nullopt}));
    QCOMPARE(s->workspace.windowTitle(first.processId()), std::nullopt);

    QVERIFY(desktop_.activate(first.window()));
    QVERIFY(QTest::qWaitFor([&] { return s->activations.size() == 2; }));
    QCOMPARE(s->activations[1][0].toLongLong(), first.processId());
}

void TestX11Workspace::ownWindowsChangeNothing()
{
    PeerProcess peer({u"window"_s, u"reader1"_s, u"Reader1"_s});
    QVERIFY(desktop_.activate(peer.window()));
    const auto s = session();
    QVERIFY(!s->workspace.isOwnWindowActive());
    QWindow window;
    window.setGeometry(50, 50, 200, 150);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(desktop_.activate(static_cast<WindowId>(window.winId())));
    QVERIFY(QTest::qWaitFor([&] { return s->workspace.isOwnWindowActive(); }));
    QCOMPARE(s->frontmost(), peer.processId());
    QVERIFY(desktop_.activate(peer.window()));
    QVERIFY(QTest::qWaitFor([&] { return !s->workspace.isOwnWindowActive(); }));
    QCOMPARE(s->frontmost(), peer.processId());

    // Activations come in order: had one been sent for the way there and back, it would be here.
    PeerProcess last({u"window"_s, u"reader2"_s, u"Reader2"_s});
    QVERIFY(desktop_.activate(last.window()));
    QVERIFY(QTest::qWaitFor([&] { return !s->activations.isEmpty(); }));
    QCOMPARE(s->activations[0][0].toLongLong(), last.processId());
}

void TestX11Workspace::emptyDesktop()
{
    const auto s = session();
    QCOMPARE(s->workspace.frontmostApplication(), std::nullopt);
    QVERIFY(!s->workspace.isOwnWindowActive());
    qint64 process = 0;
    {
        PeerProcess peer({u"window"_s, u"reader1"_s, u"Reader1"_s});
        QVERIFY(desktop_.activate(peer.window()));
        process = peer.processId();
        QCOMPARE(s->frontmost(), process);
    }
    // Openbox goes on naming the window that has gone.
    QVERIFY(QTest::qWaitFor([&] { return !s->windows.process(s->windows.activeWindow()); }));
    QCOMPARE(s->frontmost(), process); // kept while nothing is active
}

void TestX11Workspace::opensOnlyWebAddresses()
{
    const auto desk = session();
    for (const char *address : {"", "file:///etc/hostname", "javascript:alert(1)", "mailto:a@b.c",
                                "--help", "https:", "vellumo://auth"})
        QVERIFY2(!desk->workspace.openUrl(QUrl(QString::fromLatin1(address))), address);
}

void TestX11Workspace::aPublicationIsOverWithItsSelection()
{
    PeerProcess other({u"window"_s, u"beside"_s, u"Beside"_s, u"700"_s});
    PeerProcess peer({u"window"_s, u"reader"_s, u"Reader"_s, u"100"_s});
    X11Connection connection(problems_);
    X11SelectionHistory history(connection);
    const auto isOver = [&]() -> std::optional<bool> {
        const auto publication = history.publication();
        const bool isPeers = publication && publication->processIdentifier == peer.processId();
        return isPeers ? std::optional(publication->isOver) : std::nullopt;
    };
    qsizetype keys = 0;
    const auto tap = [&](quint8 key) {
        desktop_.tap(key);
        ++keys;
        return waitUntil([&] { return peer.moreLines().size() == keys; });
    };
    const auto clickOn = [&](WindowId window, quint8 button = 1) {
        desktop_.click(desktop_.geometry(window).center(), 1, button);
        desktop_.sync();
    };
    QVERIFY(desktop_.activate(peer.window()));
    QCOMPARE(isOver(), std::nullopt);
    QVERIFY(!history.publishes(peer.processId()));
    QVERIFY(tap(Key::A));
    QCOMPARE(isOver(), false);
    QVERIFY(history.publishes(peer.processId()));

    // neither the wheel nor another application
    clickOn(peer.window(), 4);
    QCOMPARE(isOver(), false);
    QVERIFY(desktop_.activate(other.window()));
    clickOn(other.window());
    QCOMPARE(isOver(), true); // as long as that is in front
    QVERIFY(desktop_.activate(peer.window()));
    QCOMPARE(isOver(), false);

    clickOn(peer.window());
    QCOMPARE(isOver(), true);
    QVERIFY(tap(Key::A));
    QCOMPARE(isOver(), false);

    QVERIFY(tap(Key::W));
    QCOMPARE(isOver(), true);
    QVERIFY(tap(Key::A));
    QCOMPARE(isOver(), false);

    QVERIFY(tap(Key::Q));
    const auto second = desktop_.waitForWindow(u"reader-second"_s);
    QVERIFY(second && desktop_.activate(*second));
    QCOMPARE(isOver(), true);
    QVERIFY(desktop_.activate(peer.window()));
    QCOMPARE(isOver(), false);

    QCOMPARE(history.publication()->sinceRead, std::nullopt);
    history.noteRead();
    QVERIFY(history.publication()->sinceRead < 5s);
    X11SelectionHistory later(connection); // the same text, published before that started
    QVERIFY(later.publication()->sinceRead);
    QVERIFY(!later.publishes(peer.processId()));
}

QTEST_MAIN(TestX11Workspace)
#include "test_x11_workspace.moc"
