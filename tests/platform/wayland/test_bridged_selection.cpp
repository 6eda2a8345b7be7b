// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/BridgedPrimarySelection.h"
#include "platform/wayland/ChosenFrontWindows.h"

#include <QSignalSpy>
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
    void announcesTheWindowOfTheBestSource()
    {
        Front sources[3];
        ChosenFrontWindows chosen({&sources[0], &sources[1], &sources[2]});
        const QSignalSpy changed(&chosen, &FrontWindows::changed);
        const struct {
            int source;
            qint64 window; ///< 0: none any more
            int announced;
            qint64 chosen;
        } steps[] = {{2, 3, 1, 3}, {2, 4, 1, 4}, {0, 1, 1, 1}, {2, 3, 0, 1},
                     {1, 2, 0, 1}, {0, 0, 1, 2}, {1, 0, 1, 3}, {2, 0, 1, 0}};
        qsizetype announced = 0;
        for (const auto &step : steps) {
            auto &source = sources[step.source];
            source.window.reset();
            if (step.window != 0) {
                source.window.emplace().processIdentifier = step.window;
            }
            Q_EMIT source.changed();
            announced += step.announced;
            QCOMPARE(changed.size(), announced);
            QCOMPARE(chosen.frontWindow().value_or(FrontWindow()).processIdentifier, step.chosen);
        }
    }

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
