// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/FrontWindows.h"
#include "platform/wayland/WaylandKeyPosting.h"
#include "platform/wayland/client/CopyKeys.h"
#include "platform/x11/X11Backend.h"
#include <QTest>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

constexpr qint64 reader = 1; // its program is no terminal

struct Keys : CopyKeys {
    bool isAvailable = true;
    int sent = 0;

    bool areAvailable() const override { return isAvailable; }
    bool send(QDeadlineTimer /*deadline*/) override { return ++sent > 0; }
};

struct Front : FrontWindows {
    std::optional<FrontWindow> window;

    std::optional<FrontWindow> frontWindow() override { return window; }
    std::optional<QString> windowTitle(qint64 /*process*/) override { return {}; }
};

} // namespace

class TestKeyPosting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sendsKeysOnlyToTheWindowInFront()
    {
        X11Backend x11(":none"_ba); // a session without X11 windows
        const struct {
            const char *name;
            FrontWindow window;
            qint64 process;
            bool isAvailable;
            bool isSent;
        } rows[] = {
            {"in front", {reader, u"org.gnome.TextEditor"_s, {}, {}, true}, reader, true, true},
            {"behind", {getppid(), {}, {}, {}, true}, reader, true, false},
            {"left the front", {reader, {}, {}, {}, false}, reader, true, false},
            {"unknown", {0, {}, {}, {}, true}, 0, true, false},
            {"this program", {getpid(), {}, {}, {}, true}, getpid(), true, false},
            {"no road", {reader, {}, {}, {}, true}, reader, false, false},
            {"terminal by id", {reader, u"foot"_s, {}, {}, true}, reader, true, false},
            {"terminal by name", {reader, {}, u"Konsole"_s, {}, true}, reader, true, false},
        };
        for (const auto &row : rows) {
            Front front;
            front.window = row.window;
            Keys keys;
            keys.isAvailable = row.isAvailable;
            WaylandKeyPosting posting(x11.keyPosting(), x11.workspace(), front, &keys);
            QVERIFY2(posting.canPostCopy(row.process) == row.isSent, row.name);
            QVERIFY2(posting.postCopy(row.process) == row.isSent, row.name);
            QCOMPARE(keys.sent, row.isSent ? 1 : 0);
        }
    }
};

QTEST_MAIN(TestKeyPosting)
#include "test_key_posting.moc"
