// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/TapMerger.h"

#include <QList>
#include <QTest>

using namespace vellumo;
using namespace std::chrono_literals;

namespace {

enum class Report { Press, Release, Tap };

struct Step {
    Report report;
    int source;
    std::chrono::milliseconds at;
    bool counts; ///< expected
};

} // namespace

class TestTapMerger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void countsEachTapOnce_data()
    {
        using enum Report;
        QTest::addColumn<QList<Step>>("steps");
        QTest::newRow("one source")
            << QList<Step>{{Press, 1, 0ms, true}, {Release, 1, 60ms, true}, {Press, 1, 90ms, true}};
        QTest::newRow("two sources at once") << QList<Step>{
            {Press, 1, 0ms, true},    {Press, 2, 2ms, false},  {Release, 1, 60ms, false},
            {Release, 2, 61ms, true}, {Press, 2, 150ms, true}, {Press, 1, 151ms, false}};
        QTest::newRow("a short press, reported late")
            << QList<Step>{{Press, 1, 0ms, true}, {Release, 1, 8ms, true}, {Press, 2, 20ms, false}};
        QTest::newRow("a quick second tap of one source")
            << QList<Step>{{Press, 1, 0ms, true}, {Release, 1, 8ms, true}, {Press, 1, 20ms, true}};
        QTest::newRow("beside a source that reports the release only") << QList<Step>{
            {Press, 1, 0ms, true},  {Tap, 2, 79ms, false},   {Release, 1, 80ms, true},
            {Tap, 2, 85ms, false},  {Press, 1, 200ms, true}, {Release, 1, 250ms, true},
            {Tap, 2, 252ms, false}, {Tap, 2, 500ms, true}};
        QTest::newRow("beside a source that reports late and without times") << QList<Step>{
            {Press, 1, 0ms, true},      {Release, 1, 30ms, true},  {Tap, 2, 150ms, false},
            {Press, 1, 900ms, true},    {Release, 1, 930ms, true}, {Press, 1, 1050ms, true},
            {Release, 1, 1080ms, true}, {Tap, 2, 1200ms, false},   {Tap, 2, 1201ms, false},
            {Tap, 2, 1300ms, true},     {Press, 1, 3000ms, true},  {Release, 1, 3030ms, true},
            {Tap, 2, 4000ms, true}};
        QTest::newRow("taps of one source, read at once")
            << QList<Step>{{Tap, 2, 0ms, true}, {Tap, 1, 1ms, false}, {Tap, 2, 2ms, true}};
        QTest::newRow("a release that was never reported")
            << QList<Step>{{Press, 1, 0ms, true}, {Press, 2, 2000ms, true}};
    }
    void countsEachTapOnce()
    {
        QFETCH(const QList<Step>, steps);
        TapMerger merger;
        for (const Step &step : steps) {
            const TapMerger::Time at(1h + step.at);
            const bool counts = step.report == Report::Press ? merger.press(step.source, at)
                : step.report == Report::Release             ? merger.release(step.source, at)
                                                             : merger.tap(step.source, at);
            QVERIFY2(counts == step.counts, qPrintable(QString::number(step.at.count())));
        }
    }
};

QTEST_APPLESS_MAIN(TestTapMerger)
#include "test_tap_merger.moc"
