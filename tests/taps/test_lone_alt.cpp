// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/LoneAlt.h"

#include <QTest>
#include <linux/input-event-codes.h>

using namespace vellumo;

namespace {

constexpr int laptop = 1;
constexpr int external = 2;
constexpr int lost = -1; ///< a step: the keyboard is gone or has lost events

struct Step {
    std::uint16_t code;
    int value;
    int keyboard = laptop;
};

QList<Step> stroke(std::uint16_t code)
{
    return {{code, 1}, {code, 0}};
}

} // namespace

class TestLoneAlt : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reports_data()
    {
        QTest::addColumn<QList<Step>>("steps");
        QTest::addColumn<QByteArray>("reports");
        const auto alt = stroke(KEY_LEFTALT);
        const Step press{KEY_LEFTALT, 1};
        const Step release{KEY_LEFTALT, 0};

        QTest::newRow("two taps, other keys, combinations")
            << alt + alt + QList<Step>{press} + stroke(KEY_F) + QList<Step>{release} + stroke(KEY_A)
                + QList<Step>{{KEY_LEFTCTRL, 1}} + alt + QList<Step>{{KEY_LEFTCTRL, 0}}
            << QByteArray("dududx");
        QTest::newRow("several keys with Alt held are one interruption")
            << QList<Step>{press} + stroke(KEY_TAB) + stroke(KEY_TAB) + QList<Step>{release} + alt
            << QByteArray("dxdu");
        QTest::newRow("key repeat")
            << QList<Step>{press, {KEY_LEFTALT, 2}, {KEY_LEFTALT, 2}, release} << QByteArray("du");
        QTest::newRow("a letter is held and repeats")
            << QList<Step>{{KEY_A, 1}, press, {KEY_A, 2}, {KEY_A, 0}, release} << QByteArray("du");
        QTest::newRow("a button of the keyboard")
            << QList<Step>{press, {BTN_LEFT, 1}, {BTN_LEFT, 0}, release} << QByteArray("du");
        QTest::newRow("right Alt") << stroke(KEY_RIGHTALT) << QByteArray("DU");
        QTest::newRow("both Alt keys")
            << QList<Step>{press, {KEY_RIGHTALT, 1}, {KEY_RIGHTALT, 0}, release, press}
            << QByteArray("dxd");
        QTest::newRow("Alt remains of a combination")
            << QList<Step>{{KEY_LEFTCTRL, 1}, press, {KEY_LEFTCTRL, 0}, release} << QByteArray();
        for (const auto modifier : {KEY_RIGHTCTRL, KEY_RIGHTSHIFT, KEY_LEFTMETA, KEY_CAPSLOCK}) {
            QTest::addRow("with modifier %d", modifier)
                << QList<Step>{{static_cast<std::uint16_t>(modifier), 1}, press, release}
                << QByteArray();
        }
        QTest::newRow("a modifier of another keyboard")
            << QList<Step>{{KEY_LEFTSHIFT, 1, external}, press, release,
                           {KEY_LEFTSHIFT, 0, external}, press, release}
            << QByteArray("du");
        QTest::newRow("a key of another keyboard")
            << QList<Step>{press, {KEY_B, 1, external}, release} << QByteArray("dx");
        QTest::newRow("Alt of another keyboard is not the one that is held")
            << QList<Step>{press, {KEY_LEFTALT, 0, external}, release} << QByteArray("du");
        QTest::newRow("unplugged while held")
            << QList<Step>{press, {0, lost}, {KEY_LEFTALT, 1, external}, {KEY_LEFTALT, 0, external}}
            << QByteArray("dxdu");
        QTest::newRow("another keyboard unplugged while held")
            << QList<Step>{press, {0, lost, external}, release} << QByteArray("du");
        QTest::newRow("unplugged while a modifier is held")
            << QList<Step>{{KEY_LEFTCTRL, 1, external}, {0, lost, external}, press, release}
            << QByteArray("du");
        QTest::newRow("Control is held when the keyboard is opened")
            << QList<Step>{{KEY_LEFTCTRL, lost}, press, release, {KEY_LEFTCTRL, 0}, press}
            << QByteArray("d");
    }
    void reports()
    {
        QFETCH(const QList<Step>, steps);
        QFETCH(const QByteArray, reports);
        taps::LoneAlt loneAlt;
        QByteArray actual;
        for (const auto &[code, value, keyboard] : steps) {
            const std::uint16_t held[] = {code};
            const auto edge = value == lost
                ? loneAlt.reset(keyboard, std::span(held).first(code == 0 ? 0 : 1))
                : loneAlt.handleKey(keyboard, code, value);
            if (edge) {
                const char report = static_cast<char>(edge->report);
                actual += edge->altKey == tapProtocol::AltKey::Left
                    ? QByteArray(1, report)
                    : QByteArray(1, report).toUpper();
            }
        }
        QCOMPARE(actual, reports);
    }
};

QTEST_APPLESS_MAIN(TestLoneAlt)
#include "test_lone_alt.moc"
