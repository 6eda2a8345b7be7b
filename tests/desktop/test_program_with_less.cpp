// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The built program where something of a desktop is missing: it does what it still can, says in
/// one line what it cannot, and ends cleanly. Each case runs on a desktop of its own.
class TestProgramWithLess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutWindowManager();
    void withoutSessionBus() { answersWithAnError(); }
    void withoutAccessibilityBus() { answersWithAnError(); }
    void withoutKeyboardExtension();

private:
    void answersWithAnError();
    /// An editor in front, with the keyboard.
    bool openEditor();
    /// What vellumo has said beside what it always says.
    QStringList complaints();
    bool endsCleanly();

    Desktop desktop_;
    QTemporaryDir files_;
    std::unique_ptr<Application> editor_;
    Program vellumo_{desktop_, QStringLiteral(VELLUMO_PROGRAM), u"vellumo-with-less"_s};
};

bool TestProgramWithLess::openEditor()
{
    QFile file(files_.filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write("tide") < 0)
        return false;
    file.close();
    editor_ = std::make_unique<Application>(qtTextEdit(file.fileName()));
    const auto window = editor_->start(desktop_);
    return window && desktop_.activate(*window);
}

QStringList TestProgramWithLess::complaints()
{
    QStringList lines = vellumo_.process().standardOutput().split(u'\n', Qt::SkipEmptyParts);
    lines.removeIf([](const QString &line) {
        return line.contains("MockAIService"_L1) || line.contains("vellumo: ready"_L1);
    });
    return lines;
}

bool TestProgramWithLess::endsCleanly()
{
    editor_.reset();
    return vellumo_.process().end() == 0;
}

void TestProgramWithLess::withoutWindowManager()
{
    QVERIFY(vellumo_.start());
    QVERIFY(openEditor());
    const auto answered = [this] {
        desktop_.chord(Key::ControlLeft, Key::A);
        desktop_.doubleTap();
        if (vellumo_.waitForPanel(1s) && vellumo_.waitForAnswer())
            return true;
        desktop_.tap(Key::Escape);
        return false;
    };
    QVERIFY(waitUntil(answered, 15s));
    desktop_.doubleTap();
    QVERIFY(vellumo_.waitForNoPanel());
    QVERIFY(vellumo_.waitForNotes(1));
    QCOMPARE(vellumo_.notes().constFirst()["sourceText"_L1].toString(), u"tide"_s);
    QVERIFY(endsCleanly());
}

void TestProgramWithLess::answersWithAnError()
{
    QVERIFY(vellumo_.start());
    QVERIFY(openEditor());
    desktop_.doubleTap();
    QVERIFY(vellumo_.waitForPanel());
    desktop_.doubleTap();
    QVERIFY(vellumo_.waitForNoPanel());
    QVERIFY(vellumo_.notes().isEmpty());
    QVERIFY(endsCleanly());
    QVERIFY2(complaints().size() == 1, qPrintable(complaints().join(u'\n')));
}

void TestProgramWithLess::withoutKeyboardExtension()
{
    vellumo_.setEnvironment(u"LD_PRELOAD"_s, QStringLiteral(VELLUMO_TEST_WITHOUT_XKB));
    vellumo_.setEnvironment(u"ASAN_OPTIONS"_s,
                            qEnvironmentVariable("ASAN_OPTIONS") + u":verify_asan_link_order=0"_s);
    QVERIFY(vellumo_.start());
    QVERIFY(openEditor());
    desktop_.doubleTap();
    QVERIFY(!vellumo_.waitForPanel(600ms));
    QVERIFY(endsCleanly());
    QVERIFY2(complaints().size() == 1, qPrintable(complaints().join(u'\n')));
}

QTEST_MAIN(TestProgramWithLess)
#include "test_program_with_less.moc"
