// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"

using namespace vellumo::test;

/// The built program where a part of the desktop is missing. It does what it still can, prints
/// one line about what it cannot do, and ends cleanly. Each case has a separate desktop.
class TestProgramWithLess : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void withoutWindowManager()
    {
        QVERIFY(vellumo_->start() && editor_->open());
        const auto answered = [this] {
            desktop_.doubleTap();
            if (vellumo_->waitForPanel(1s) && vellumo_->waitForAnswer())
                return true;
            desktop_.tap(Key::Escape);
            return false;
        };
        QVERIFY(waitUntil(answered, 15s));
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForNoPanel() && vellumo_->waitForNotes(1));
        QCOMPARE(vellumo_->notes().constFirst()["sourceText"_L1].toString(), sentence);
        QCOMPARE(complaintsAtTheEnd(), QStringList());
    }

    void withoutSessionBus() { answersWithAnError(); }
    void withoutAccessibilityBus() { answersWithAnError(); }

    void withoutKeyboardExtension()
    {
        vellumo_->setEnvironment(u"LD_PRELOAD"_s, QStringLiteral(VELLUMO_TEST_WITHOUT_XKB));
        vellumo_->setEnvironment(u"ASAN_OPTIONS"_s,
                                 qEnvironmentVariable("ASAN_OPTIONS")
                                     + u":verify_asan_link_order=0"_s);
        QVERIFY(vellumo_->start() && editor_->open());
        desktop_.doubleTap();
        QVERIFY(!vellumo_->waitForPanel(600ms));
        QCOMPARE(complaintsAtTheEnd().size(), 1);
    }

private:
    void answersWithAnError()
    {
        QVERIFY(vellumo_->start() && editor_->open());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForPanel());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForNoPanel() && vellumo_->notes().isEmpty());
        QCOMPARE(complaintsAtTheEnd().size(), 1);
    }

    /// Ends the program. Returns what it has printed beyond its usual lines.
    QStringList complaintsAtTheEnd()
    {
        editor_.reset();
        if (vellumo_->process().end() != 0)
            return {u"no clean end"_s};
        QStringList lines = vellumo_->process().standardOutput().split(u'\n', Qt::SkipEmptyParts);
        lines.removeIf([](const QString &line) {
            return line.contains("MockAIService"_L1) || line.contains("vellumo: ready"_L1);
        });
        return lines;
    }
};

QTEST_MAIN(TestProgramWithLess)
#include "test_program_with_less.moc"
