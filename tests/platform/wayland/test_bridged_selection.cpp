// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/BridgedPrimarySelection.h"

#include <QTest>

using namespace vellumo;
using namespace std::chrono_literals;

namespace {

constexpr qint64 compositor = 7;
constexpr qint64 native = 8;
constexpr qint64 ofX11 = 9;

struct Published : PrimarySelection {
    Publication latest;

    std::optional<Publication> publication() override { return latest; }
    bool publishes(qint64 process) override { return process == ofX11; }
    std::optional<QString> string(QDeadlineTimer /*deadline*/) override { return {}; }
};

struct Front : FrontWindows {
    std::optional<FrontWindow> window;

    std::optional<FrontWindow> frontWindow() override { return window; }
    std::optional<QString> windowTitle(qint64 /*process*/) override { return {}; }
};

} // namespace

class TestBridgedSelection : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void attributesTextToTheWindowInFront()
    {
        const struct {
            qint64 owner;
            std::chrono::milliseconds age; ///< of the text
            std::optional<std::chrono::milliseconds> sinceFront; ///< since the window's last change
            bool isActive;
            qint64 process; ///< expected; -1 for no publication
            bool isOver;
        } rows[] = {
            {ofX11, 5s, 1s, true, ofX11, false}, // XWayland knows its own clients
            {compositor, 1s, 5s, true, native, false},
            {compositor, 5s, 1s, true, native, true}, // selected in the window before
            {compositor, 1s, 5s, false, 0, false}, // in a window that the source does not see
            {compositor, 5s, 1s, false, 0, true},
            {compositor, 60s, 90s, false, 0, true}, // perhaps of another such window
            {compositor, 60s, 90s, true, native, false},
            {compositor, 1s, std::nullopt, true, -1, false},
        };
        for (const auto &row : rows) {
            Published published;
            Front front;
            published.latest.processIdentifier = row.owner;
            published.latest.age = row.age;
            if (row.sinceFront) {
                front.window =
                    FrontWindow{.processIdentifier = native,
                                .applicationId = {},
                                .applicationName = {},
                                .since = std::chrono::steady_clock::now() - *row.sinceFront,
                                .isActive = row.isActive};
            }
            BridgedPrimarySelection selection(published, nullptr, front, [] { return compositor; });
            const auto publication = selection.publication();
            QCOMPARE(publication ? publication->processIdentifier : -1, row.process);
            QCOMPARE(publication && publication->isOver, row.isOver);
            QCOMPARE(selection.publishes(native), row.process == native && !row.isOver);
        }
    }
};

QTEST_APPLESS_MAIN(TestBridgedSelection)
#include "test_bridged_selection.moc"
