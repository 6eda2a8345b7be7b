// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "PeerProcess.h"
#include "driver/Desktop.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionHistory.h"
#include "platform/x11/X11Windows.h"
#include "platform/x11/X11Workspace.h"
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>
#include <array>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;
using namespace vellumo::test;

/// Run twice: on a desktop with a window manager and on one without.
class TestX11Workspace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(applications_.filePath(u"org.example.Reader.desktop"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=The Reader\nStartupWMClass=reader\n"
                   "Categories=Utility;TextEditor;\n");
    }

    void init()
    {
        QVERIFY(desktop_.isOpen());
        const auto noWindowLeft = [this] { return desktop_.windows(u"reader"_s).isEmpty(); };
        QVERIFY(QTest::qWaitFor(noWindowLeft));
    }

    void followsForeignProcesses()
    {
        PeerProcess first({u"window"_s, u"reader"_s, u"Reader-main"_s});
        QVERIFY(desktop_.activate(first.window()));
        const auto s = session();
        QCOMPARE(s->workspace.frontmostApplication(),
                 (RunningApplication{first.processId(), u"The Reader"_s, u"org.example.Reader"_s,
                                     true}));
        QCOMPARE(s->workspace.windowTitle(first.processId()), u"title of reader"_s);

        PeerProcess second({u"window"_s, u"other-reader"_s, u"Other-Reader"_s});
        QVERIFY(desktop_.activate(second.window()));
        QVERIFY(QTest::qWaitFor([&] { return !s->activations.isEmpty(); }));
        QCOMPARE(s->activations.size(), 1); // none for the window that existed before
        QCOMPARE(s->activations[0][0].toLongLong(), second.processId());
        QCOMPARE(s->workspace.frontmostApplication(),
                 (RunningApplication{second.processId(), u"Other-Reader"_s, std::nullopt}));
        QCOMPARE(s->workspace.windowTitle(first.processId()), std::nullopt);

        QVERIFY(desktop_.activate(first.window()));
        QVERIFY(QTest::qWaitFor([&] { return s->activations.size() == 2; }));
        QCOMPARE(s->activations[1][0].toLongLong(), first.processId());
    }

    void ownWindowsChangeNothing()
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

        // Activations come in order: one for the way there and back would have arrived by
        // now.
        PeerProcess last({u"window"_s, u"reader2"_s, u"Reader2"_s});
        QVERIFY(desktop_.activate(last.window()));
        QVERIFY(QTest::qWaitFor([&] { return !s->activations.isEmpty(); }));
        QCOMPARE(s->activations[0][0].toLongLong(), last.processId());
    }

    void emptyDesktop()
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
        // Openbox still names the destroyed window.
        QVERIFY(QTest::qWaitFor([&] { return !s->windows.process(s->windows.activeWindow()); }));
        QCOMPARE(s->frontmost(), process); // kept while nothing is active
    }

    void namesThatSettleLate()
    {
        PeerProcess peer({u"window"_s, u"reader-starts"_s, u"Starts"_s});
        QVERIFY(desktop_.activate(peer.window()));
        const auto s = session();
        QCOMPARE(s->workspace.frontmostApplication(),
                 (RunningApplication{peer.processId(), u"Starts"_s, std::nullopt}));
        const QSignalSpy renamed(&s->workspace, &Workspace::didRenameFrontmostApplication);
        s->setProperty(peer.window(), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, "reader\0Reader\0"_ba);
        QVERIFY(QTest::qWaitFor([&] { return !renamed.isEmpty(); }));
        const RunningApplication settled{peer.processId(), u"The Reader"_s, u"org.example.Reader"_s,
                                         true};
        QCOMPARE(s->workspace.frontmostApplication(), settled);

        // asked before the event has been read
        s->setProperty(peer.window(), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, "other\0Other\0"_ba);
        QCOMPARE(s->workspace.frontmostApplication()->localizedName, u"Other"_s);
    }

    void skipsPastActivations()
    {
        PeerProcess first({u"window"_s, u"reader1"_s, u"Reader1"_s});
        PeerProcess second({u"window"_s, u"reader2"_s, u"Reader2"_s});
        QVERIFY(desktop_.activate(second.window()));
        QVERIFY(desktop_.activate(first.window()));
        const auto s = session();
        QVERIFY(desktop_.activate(second.window())); // its event is on the way
        const auto before = s->activations.size(); // a slow desktop has reported it already
        s->workspace.skipPastActivations();
        QVERIFY(desktop_.activate(first.window()));
        QVERIFY(QTest::qWaitFor([&] { return s->activations.size() > before; }));
        QCOMPARE(s->activations[before][0].toLongLong(), first.processId());
        QCOMPARE(s->activations.size(), before + 1);
    }

    void processBehindAWindow_data()
    {
        QTest::addColumn<bool>("namesAnother");
        QTest::addColumn<QByteArray>("machine");
        QTest::addColumn<bool>("isKnown");
        const QByteArray here = QSysInfo::machineHostName().toLocal8Bit();
        QTest::newRow("another process's number") << true << here << true;
        QTest::newRow("the same machine with its domain") << true << here + ".example" << true;
        QTest::newRow("another machine") << true << "elsewhere.example"_ba << false;
        QTest::newRow("this machine had another name") << false << "elsewhere"_ba << true;
    }

    void processBehindAWindow()
    {
        QFETCH(bool, namesAnother);
        QFETCH(QByteArray, machine);
        QFETCH(bool, isKnown);
        PeerProcess local({u"window"_s, u"reader1"_s, u"Reader1"_s});
        PeerProcess peer({u"window"_s, u"reader2"_s, u"Reader2"_s});
        QVERIFY(desktop_.activate(peer.window()));
        QVERIFY(desktop_.activate(local.window()));
        const auto s = session();
        const auto named =
            static_cast<quint32>(namesAnother ? local.processId() : peer.processId());
        s->setProperty(peer.window(), s->connection.atom("_NET_WM_PID"_ba), XCB_ATOM_CARDINAL, 32,
                       QByteArray(reinterpret_cast<const char *>(&named), sizeof named));
        s->setProperty(peer.window(), XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, 8, machine);
        const qint64 expected = isKnown ? peer.processId() : 0;
        QVERIFY(desktop_.activate(peer.window()));
        const auto announced = [&s] {
            return s->activations.isEmpty() ? -1 : s->activations.last()[0].toLongLong();
        };
        QVERIFY(QTest::qWaitFor([&] { return announced() == expected; }));
        QCOMPARE(s->workspace.frontmostApplication(),
                 (RunningApplication{expected, u"Reader2"_s, std::nullopt}));
        QCOMPARE(s->workspace.windowTitle(expected), u"title of reader2"_s);
    }

    void knowsACoveredScreen()
    {
        PeerProcess reader({u"window"_s, u"reader1"_s, u"Reader1"_s});
        PeerProcess locker({u"window"_s, u"locker"_s, u"Locker"_s});
        QVERIFY(desktop_.activate(locker.window()));
        QVERIFY(desktop_.activate(reader.window()));
        desktop_.setFullScreen(reader.window(), true); // not a screen locker
        const auto s = session();
        auto *xcb = s->connection.xcb();
        const auto showUnmanaged = [&](quint32 width) {
            const auto window = locker.window();
            xcb_unmap_window(xcb, window);
            s->connection.roundTrip();
            if (!QTest::qWaitFor([&] { return !desktop_.isVisible(window); })) {
                return false;
            }
            constexpr quint32 unmanaged = 1;
            xcb_change_window_attributes(xcb, window, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
            xcb_reparent_window(xcb, window, s->connection.root(), 0, 0);
            const std::array<quint32, 3> size{width, 5000, XCB_STACK_MODE_ABOVE};
            xcb_map_window(xcb, window);
            xcb_configure_window(xcb, window,
                                 XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT
                                     | XCB_CONFIG_WINDOW_STACK_MODE,
                                 size.data());
            return s->connection.roundTrip();
        };
        QVERIFY(!s->workspace.isScreenCovered());
        // the window manager may not have released it yet
        QVERIFY(waitUntil([&] { return showUnmanaged(5000) && s->workspace.isScreenCovered(); }));
        QVERIFY(showUnmanaged(300)); // a menu
        QVERIFY(!s->workspace.isScreenCovered());
    }

    void opensOnlyWebAddresses()
    {
        const auto desk = session();
        for (const char *address : {"", "file:///etc/hostname", "javascript:alert(1)",
                                    "mailto:a@b.c", "--help", "https:", "vellumo://auth"})
            QVERIFY2(!desk->workspace.openUrl(QUrl(QString::fromLatin1(address))), address);
    }

    void opensTheAccessibilitySettings()
    {
        const QTemporaryDir folder;
        qputenv("PATH", folder.path().toUtf8() + ':' + qgetenv("PATH"));
        const auto desk = session();
        const std::pair<QByteArray, QString> rows[] = {
            {"ubuntu:GNOME", u"gnome-control-center universal-access"_s},
            {"KDE", u"systemsettings5 kcm_access"_s}, // the first choice is not installed
            {"MATE", u"mate-at-properties "_s},
            {"X-Cinnamon", u"cinnamon-settings universal-access"_s},
        };
        for (const auto &[name, command] : rows) {
            qputenv("XDG_CURRENT_DESKTOP", name);
            QFile program(folder.filePath(command.section(u' ', 0, 0)));
            QVERIFY(program.open(QIODevice::WriteOnly));
            program.write("#!/bin/sh\necho \"${0##*/} $*\" > \"$0.started\"\n");
            program.setPermissions(program.permissions() | QFile::ExeOwner | QFile::ExeUser);
            program.close();
            QVERIFY2(desk->workspace.openAccessibilitySettings(), name);
            QFile started(program.fileName() + u".started"_s);
            QVERIFY(waitUntil([&] { return started.size() > 0; }));
            QVERIFY(started.open(QIODevice::ReadOnly));
            QCOMPARE(QString::fromUtf8(started.readAll()), command + u'\n');
        }
        qputenv("XDG_CURRENT_DESKTOP", "another");
        QVERIFY(!desk->workspace.openAccessibilitySettings());
    }

    void aPublicationIsOverWithItsSelection()
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
        PeerProcess editor({u"window"_s, u"emacs"_s, u"Emacs"_s, u"400"_s});
        QVERIFY(desktop_.activate(editor.window()));
        clickOn(editor.window()); // it publishes the ended selection once more
        desktop_.tap(Key::A);
        std::optional<Publication> last;
        QVERIFY(waitUntil([&] {
            last = history.publication();
            return last && last->processIdentifier == editor.processId();
        }));
        QVERIFY(last->isOver);

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

private:
    struct Session {
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
        void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, int format,
                         const QByteArray &bytes)
        {
            xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, name, type,
                                static_cast<uint8_t>(format),
                                static_cast<uint32_t>(bytes.size() * 8 / format),
                                bytes.constData());
            connection.roundTrip();
        }
        X11Connection connection;
        X11Windows windows;
        X11Workspace workspace;
        QSignalSpy activations{&workspace, &Workspace::didActivateApplication};
    };

    [[nodiscard]] std::unique_ptr<Session> session()
    {
        return std::make_unique<Session>(problems_, applications_.path());
    }

    Desktop desktop_;
    QTemporaryDir applications_;
    X11Problems problems_;
};

QTEST_MAIN(TestX11Workspace)
#include "test_x11_workspace.moc"
