// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "PeerProcess.h"
#include "driver/Desktop.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventMonitors.h"
#include "platform/x11/X11KeyPosting.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11Windows.h"
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>
#include <array>
#include <vector>
#include <xcb/xtest.h>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;
using Flags = std::vector<quint32>; // comparing two empty lists of Qt 6.4 reads null pointers

namespace {

constexpr quint8 insertKey = 118;

/// Receives only what no monitor swallows.
class OwnWindow : public QWindow {
public:
    OwnWindow()
    {
        setGeometry(50, 50, 200, 150);
        show();
    }
    [[nodiscard]] bool takeKeyboard()
    {
        // a request for a window that the manager has not seen yet is lost
        return QTest::qWaitForWindowExposed(this) && QTest::qWaitFor([this] {
                   requestActivate();
                   return isActive();
               });
    }
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

/// Keys in the order of a list: positive codes are pressed, negative ones released.
using Keys = QList<int>;

} // namespace

class TestX11Input : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        with_ = std::make_unique<Session>(problems_);
        QVERIFY(with_->connection.isUsable());
        flags_.clear();
        global_ = with_->monitors.addGlobalMonitor(
            maskOf(EventType::FlagsChanged),
            [this](const Event &e) { flags_.push_back(e.modifierFlags); });
        QVERIFY(global_);
    }

    void cleanup()
    {
        QVERIFY(areNoKeysDown());
        global_.reset();
        with_.reset();
    }

    void reportsFlags_data()
    {
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<Flags>("flags");
        using namespace ModifierFlag;
        constexpr int alt = Key::AltLeft;
        constexpr int altRight = Key::AltRight;
        constexpr int shift = Key::ShiftLeft;
        constexpr int num = Key::NumLock;
        constexpr int caps = Key::CapsLock;
        QTest::newRow("Alt") << Keys{alt, -alt} << Flags{Option, 0};
        QTest::newRow("letters are not seen") << Keys{Key::A, -Key::A} << Flags();
        QTest::newRow("Num Lock on") << Keys{num, -num, alt, -alt, num, -num} << Flags{Option, 0};
        QTest::newRow("Num Lock while Alt is held, which is no second press")
            << Keys{alt, num, -num, -alt, num, -num} << Flags{Option, 0};
        QTest::newRow("Caps Lock on") << Keys{caps, -caps, alt, -alt, caps, -caps}
                                      << Flags{CapsLock, CapsLock | Option, CapsLock, 0};
        QTest::newRow("Shift released while Alt is held")
            << Keys{shift, alt, -shift, -alt} << Flags{Shift, Shift | Option, Option, 0};
        QTest::newRow("both Alts") << Keys{alt, altRight, -alt, -altRight} << Flags{Option, 0};
    }

    void reportsFlags()
    {
        QFETCH(Keys, keys);
        QFETCH(Flags, flags);
        play(keys);
        QVERIFY(hasFlags(flags));
    }

    void flagsGoToTheSideWithTheKeyboard()
    {
        Flags local;
        QList<qint64> times;
        const auto monitor = with_->monitors.addLocalMonitor(
            maskOf(EventType::FlagsChanged), [&](const Event &event) {
                times.append(event.timestampMs);
                local.push_back(event.modifierFlags);
                return true;
            });
        OwnWindow window;
        QVERIFY(window.takeKeyboard());
        play({Key::AltLeft, -Key::AltLeft});
        QVERIFY(hasFlags(Flags()));
        QCOMPARE(local, (Flags{ModifierFlag::Option, 0}));
        QVERIFY(times.at(0) > 0 && times.at(0) <= times.at(1)); // the server's

        PeerProcess peer({u"window"_s, u"other"_s, u"Other"_s});
        QVERIFY(giveKeyboardTo(peer));
        QVERIFY(QTest::qWaitFor([] { return QGuiApplication::focusWindow() == nullptr; }));
        local.clear();
        play({Key::AltLeft, -Key::AltLeft});
        QVERIFY(hasFlags({ModifierFlag::Option, 0}));
        QVERIFY(local.empty());
    }

    void clicksGoToTheSideWithThePointer()
    {
        const EventMask mask = maskOf(EventType::LeftMouseDown) | maskOf(EventType::RightMouseDown)
            | maskOf(EventType::ScrollWheel);
        QList<EventType> local;
        QList<EventType> global;
        const auto localMonitor = with_->monitors.addLocalMonitor(mask, [&](const Event &event) {
            local.append(event.type);
            return true;
        });
        const auto globalMonitor = with_->monitors.addGlobalMonitor(
            mask, [&](const Event &event) { global.append(event.type); });
        OwnWindow window;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        PeerProcess peer({u"window"_s, u"other"_s, u"Other"_s});
        QVERIFY(giveKeyboardTo(peer));

        const QList<EventType> seen{EventType::LeftMouseDown, EventType::RightMouseDown,
                                    EventType::ScrollWheel};
        const auto clickAll = [&](QPoint point) {
            for (const quint8 button : std::to_array<quint8>({1, 2, 3, 4})) {
                desktop_.click(point, 1, button);
            }
            desktop_.sync();
            with_->connection.roundTrip();
        };
        clickAll(desktop_.geometry(peer.window()).center());
        QCoreApplication::processEvents();
        QCOMPARE(global, seen);
        QVERIFY(local.isEmpty());

        global.clear();
        clickAll(window.geometry().center());
        QVERIFY(QTest::qWaitFor([&] { return local.size() >= 3; }));
        QCOMPARE(local, seen);
        QVERIFY(global.isEmpty());
    }

    void swallowsKeysOfOwnWindows()
    {
        QList<quint16> codes;
        const auto monitor =
            with_->monitors.addLocalMonitor(maskOf(EventType::KeyDown), [&](const Event &event) {
                codes.append(event.keyCode);
                return event.keyCode != KeyCode::Escape;
            });
        OwnWindow window;
        QVERIFY(window.takeKeyboard());
        play({Key::Escape, -Key::Escape, Key::A, -Key::A});
        QVERIFY(QTest::qWaitFor([&] { return window.keys.contains(Qt::Key_A); }));
        QCOMPARE(codes, (QList<quint16>{KeyCode::Escape, KeyCode::Other}));
        QCOMPARE(window.keys, QList<int>{Qt::Key_A});
    }

    void waitsForRelease()
    {
        play({Key::AltLeft});
        QVERIFY(!with_->monitors.waitForRelease(ModifierFlag::Option, QDeadlineTimer(30)));
        QVERIFY(with_->monitors.waitForRelease(ModifierFlag::Control, QDeadlineTimer(30)));

        auto *user = xcb_connect(nullptr, nullptr);
        xcb_test_fake_input(user, XCB_KEY_RELEASE, Key::AltLeft, 60, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_flush(user); // the server lets 60 ms pass before this key
        QVERIFY(with_->monitors.waitForRelease(ModifierFlag::Option, QDeadlineTimer(5000)));
        QVERIFY(flags_.empty()); // nothing was delivered meanwhile, and nothing is lost
        xcb_disconnect(user);
        QVERIFY(hasFlags({ModifierFlag::Option, 0}));
    }

    void copyKeysReachTheApplicationAlone()
    {
        PeerProcess peer({u"window"_s, u"other"_s, u"Other"_s});
        QVERIFY(giveKeyboardTo(peer));
        play({Key::AltLeft, Key::ShiftLeft});
        QVERIFY(with_->keyPosting.postCopy(peer.processId()));
        QVERIFY(areNoKeysDown());
        const auto copy = u"%1 %2"_s.arg(insertKey).arg(int{XCB_MOD_MASK_CONTROL});
        QVERIFY(QTest::qWaitFor([&] { return peer.moreLines().contains(copy); }));
        play({-Key::AltLeft, -Key::ShiftLeft});
    }

    void copyKeysHideNoTapOfTheUser()
    {
        using ModifierFlag::Option;
        PeerProcess peer({u"window"_s, u"other"_s, u"Other"_s});
        QVERIFY(giveKeyboardTo(peer));
        play({Key::AltLeft}); // not seen yet
        QVERIFY(with_->keyPosting.postCopy(peer.processId()));
        play({-Key::AltLeft, Key::AltLeft, -Key::AltLeft}); // nothing was handled in between
        QVERIFY(hasFlags({Option, Option, 0}));

        play({Key::AltLeft});
        QVERIFY(hasFlags({Option, Option, 0, Option}));
        QVERIFY(with_->keyPosting.postCopy(peer.processId()));
        QVERIFY(hasFlags({Option, Option, 0, Option}));
        play({-Key::AltLeft, Key::AltLeft, -Key::AltLeft});
        QVERIFY(hasFlags({Option, Option, 0, Option, Option, 0}));
    }

private:
    [[nodiscard]] bool giveKeyboardTo(PeerProcess &peer) const
    {
        // The manager may still name a destroyed window, whose number this one may have got.
        return desktop_.activate(peer.window())
            && QTest::qWaitFor([&] { return desktop_.focusWindow() == peer.window(); });
    }

    void play(const Keys &keys)
    {
        for (const int key : keys) {
            if (key > 0) {
                desktop_.press(static_cast<quint8>(key));
            } else {
                desktop_.release(static_cast<quint8>(-key));
            }
        }
        desktop_.sync();
        with_->connection.roundTrip(); // the events of these keys are in the queue now
    }

    [[nodiscard]] bool hasFlags(const Flags &flags)
    {
        QCoreApplication::processEvents();
        if (flags_ != flags) {
            qWarning() << Qt::hex << "flags" << flags_ << "instead of" << flags;
        }
        return flags_ == flags;
    }

    [[nodiscard]] bool areNoKeysDown()
    {
        const auto keymap = with_->windowConnection.reply<xcb_query_keymap_reply_t>(
            xcb_query_keymap(with_->windowConnection.xcb()));
        return keymap && std::ranges::all_of(keymap->keys, [](uint8_t keys) { return keys == 0; });
    }

    struct Session {
        explicit Session(X11Problems &problems)
            : connection(problems)
            , windowConnection(problems)
            , windows(windowConnection)
            , monitors(connection, problems)
            , keyPosting(connection, monitors, windows, problems)
        {
        }
        X11Connection connection;
        X11Connection windowConnection;
        X11Windows windows;
        X11EventMonitors monitors;
        X11KeyPosting keyPosting;
    };

    Desktop desktop_;
    X11Problems problems_;
    std::unique_ptr<Session> with_;
    std::unique_ptr<EventMonitorHandle> global_;
    Flags flags_; ///< that reached the global monitor
};

QTEST_MAIN(TestX11Input)
#include "test_x11_input.moc"
