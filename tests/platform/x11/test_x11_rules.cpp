// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Rules that need no desktop, and a server that lacks something.
#include "driver/Application.h"
#include "driver/Waiting.h"
#include "platform/EventMonitoring.h"
#include "platform/x11/ModifierFlags.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/SelectionValue.h"
#include "platform/x11/ServerTime.h"
#include "platform/x11/X11Backend.h"
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;
using namespace std::chrono_literals;

class TestX11Rules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mapsModifiers()
    {
        using namespace ModifierFlag;
        const struct {
            const char *name;
            quint8 base;
            quint8 latched;
            quint8 locked;
            quint32 flags;
        } cases[] = {{"Num Lock key held", 0x10, 0, 0, 0},
                     {"Caps Lock key held", 0x02, 0, 0, CapsLock},
                     {"sticky Control", 0, 0x04, 0, Control},
                     {"locked Shift is no flag", 0, 0, 0x01, 0},
                     {"Super and AltGr", 0xC0, 0, 0, Command | AltGr}};
        for (const auto &each : cases) {
            QVERIFY2(modifierFlags(each.base, each.latched, each.locked) == each.flags, each.name);
        }
    }

    void widensServerTime()
    {
        ServerTime time;
        const qint64 first = time.widen(0xFFFFFF00U);
        QCOMPARE(time.widen(0x00000010U) - first, 0x110); // over the end of 32 bits
        QCOMPARE(time.widen(0xFFFFFFF0U) - first, 0xF0); // and an older one after it
        QCOMPARE(time.widen(0x70000000U) - first, 0x70000100);
        QCOMPARE(time.widen(0xE0000000U) - first, 0xE0000100LL);
    }

    void decodesText()
    {
        constexpr xcb_atom_t utf8 = 300;
        const struct {
            const char *name;
            xcb_atom_t type;
            QByteArray bytes;
            QString text;
        } cases[] = {{"surrogates by themselves", utf8,
                      "a \xED\xA0\xBC\xED\xBC\x8A\xED\xA0\xBC\xED\xBC\x95 b"_ba,
                      u"a \U0001F30A\U0001F315 b"_s},
                     {"half a pair", utf8, "a\xED\xA0\xBC"_ba, u"a\uFFFD\uFFFD\uFFFD"_s}};
        for (const auto &each : cases) {
            QVERIFY2(selectionText({each.type, 8, each.bytes}) == each.text, each.name);
        }
    }

    void handlersChangeMonitorsWhileCalled()
    {
        auto list = std::make_shared<MonitorList>();
        const Event event{EventType::FlagsChanged, 0, KeyCode::Other, 0};
        const auto mask = maskOf(EventType::FlagsChanged);
        QStringList calls;
        std::unique_ptr<EventMonitorHandle> added;
        const auto oldest = list->add(mask, [&](const Event &) {
            calls.append(u"oldest"_s);
            return true;
        });
        std::unique_ptr<EventMonitorHandle> removed = list->add(mask, [&](const Event &) {
            calls.append(u"removed"_s);
            return true;
        });
        std::unique_ptr<EventMonitorHandle> newest;
        newest = list->add(mask, [&](const Event &) {
            calls.append(u"newest"_s);
            added = list->add(mask, [&](const Event &) {
                calls.append(u"added"_s);
                return false;
            });
            removed.reset();
            newest.reset(); // destroys the closure that runs
            return true;
        });
        QVERIFY(list->deliver(event));
        QCOMPARE(calls, (QStringList{u"newest"_s, u"oldest"_s}));
        QVERIFY(!list->deliver(event)); // the newest swallows the event
        QCOMPARE(calls, (QStringList{u"newest"_s, u"oldest"_s, u"added"_s}));
        list.reset(); // before its last handle
    }

    void doesLessWithoutExtensions()
    {
        Application server({u"X server"_s,
                            u"Xvfb"_s,
                            {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s,
                             u"-ac"_s, u"-extension"_s, u"XTEST"_s, u"-extension"_s, u"XFIXES"_s,
                             u"-extension"_s, u"X-Resource"_s},
                            {},
                            {}});
        QVERIFY(server.launch());
        QVERIFY(waitUntil([&] { return server.standardOutput().endsWith(u'\n'); }, 10s));
        X11Backend backend(':' + server.standardOutput().trimmed().toLatin1());
        QVERIFY(!backend.keyPosting().postCopy(1));
        QVERIFY(!backend.primarySelection().publication());
        QVERIFY(!backend.pasteboard().items(QDeadlineTimer(5000))); // a change would not be noticed
        QVERIFY(backend.eventMonitoring().addGlobalMonitor(maskOf(EventType::FlagsChanged),
                                                           [](const Event &) {}));
    }
};

QTEST_MAIN(TestX11Rules)
#include "test_x11_rules.moc"
