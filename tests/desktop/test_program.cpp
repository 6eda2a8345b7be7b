// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Editor.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include "support/WebPage.h"
#include <QTemporaryFile>
#include <QTest>
#include <csignal>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;

} // namespace

/// The built program on a desktop with a window manager, the way a person meets it.
class TestProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void explainsWhatIsSelectedOnAPageAndKeepsANote();
    void closesAsAPersonExpects_data();
    void closesAsAPersonExpects();
    void saysWhatIsMissing_data();
    void saysWhatIsMissing();
    void doesNotWaitForASilentClipboardOwner();
    void pastesWithoutWaitingForTheOwner();
    void standsOverAFullScreenWindow();
    void keepsTheNoteWhenItIsEnded_data();
    void keepsTheNoteWhenItIsEnded();
    void refusesASecondWriterOfTheSameNotes();

private:
    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Editor> editor_;
};

void TestProgram::init()
{
    editor_ = std::make_unique<Editor>(desktop_, sentence);
    const QString folder = u"vellumo-%1-%2"_s.arg(QLatin1StringView(QTest::currentTestFunction()),
                                                  QLatin1StringView(QTest::currentDataTag()));
    vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder);
    QVERIFY(vellumo_->start());
}

void TestProgram::cleanup()
{
    if (QTest::currentTestFailed()) {
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput()
                             << "panel:" << vellumo_->panel().has_value()
                             << "notes:" << vellumo_->notes().size() << '\n'
                             << vellumo_->panelText();
    }
    editor_.reset();
    vellumo_.reset();
}

void TestProgram::explainsWhatIsSelectedOnAPageAndKeepsANote()
{
    WebPage page(desktop_, u"tides"_s,
                 u"<p id=sentence>"_s + sentence + u"</p><p id=rest>Rest.</p>"_s, u"?day=2#turn"_s);
    if (!page.isInstalled())
        QSKIP("Firefox is not installed");
    QVERIFY(page.open());
    QCOMPARE(page.selection(), sentence);

    desktop_.doubleTap();
    const auto panel = vellumo_->waitForPanel();
    QVERIFY(panel);
    // shown without taking the keyboard from the page
    QCOMPARE(desktop_.activeWindow(), page.window());
    QVERIFY(vellumo_->waitForAnswer());
    QVERIFY(page.hasFocus());
    QCOMPARE(page.selection(), sentence);

    QVERIFY(vellumo_->ask(u"Why twice"_s));
    QVERIFY(vellumo_->waitForText(u"「Why twice」"_s));
    QVERIFY(vellumo_->notes().isEmpty());
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    // the keyboard is back where it was
    QVERIFY(waitUntil([&] { return desktop_.activeWindow() == page.window(); }));

    QVERIFY(vellumo_->waitForNotes(1));
    const QJsonObject note = vellumo_->notes().constFirst();
    QCOMPARE(note["sourceText"_L1].toString(), sentence);
    QCOMPARE(note["context"_L1]["key"_L1].toString(), u"web-url:"_s + page.address());
    QCOMPARE(note["context"_L1]["displayName"_L1].toString(), u"127.0.0.1"_s);
    QCOMPARE(note["context"_L1]["source"_L1].toString(), u"webURL"_s);
    const QJsonArray followUps = note["followUps"_L1].toArray();
    QCOMPARE(followUps.size(), 1);
    QCOMPARE(followUps.at(0)["question"_L1].toString(), u"Why twice"_s);
    QVERIFY(followUps.at(0)["answer"_L1].toString().contains("Why twice"_L1));
}

void TestProgram::closesAsAPersonExpects_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("a second double tap") << u"tap"_s;
    QTest::newRow("a click elsewhere") << u"click"_s;
    QTest::newRow("scrolling elsewhere") << u"scroll"_s;
    QTest::newRow("another application") << u"application"_s;
}

void TestProgram::closesAsAPersonExpects()
{
    QFETCH(QString, how);
    QVERIFY(editor_->open());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());

    // a click inside leaves it open
    const QRect place = desktop_.geometry(vellumo_->panel().value());
    desktop_.click({place.center().x(), place.top() + 25});
    QVERIFY(!vellumo_->waitForNoPanel(300ms));

    const QPoint elsewhere = desktop_.geometry(editor_->window()).center();
    std::unique_ptr<Application> other;
    if (how == "tap"_L1) {
        desktop_.doubleTap();
    } else if (how == "click"_L1) {
        desktop_.click(elsewhere);
    } else if (how == "scroll"_L1) {
        desktop_.click(elsewhere, 1, 5);
    } else {
        other = std::make_unique<Application>(xterm(u"exec cat"_s));
        const auto window = other->start(desktop_);
        QVERIFY(window && desktop_.activate(*window));
    }
    QVERIFY(vellumo_->waitForNoPanel());
    QVERIFY(vellumo_->waitForNotes(1));
    QCOMPARE(vellumo_->notes().constFirst()["sourceText"_L1].toString(), sentence);
}

void TestProgram::saysWhatIsMissing_data()
{
    QTest::addColumn<bool>("dies");
    QTest::newRow("nothing is selected") << false;
    QTest::newRow("the application dies between the presses") << true;
}

void TestProgram::saysWhatIsMissing()
{
    QFETCH(bool, dies);
    QVERIFY(editor_->open());
    if (dies) {
        desktop_.tap(Key::AltLeft);
        editor_->process().killAll();
    } else {
        QVERIFY(editor_->selectNothing());
    }
    desktop_.doubleTap(); // one pair, also when its first press belongs to the one before
    QVERIFY(vellumo_->waitForPanel());
    QVERIFY(vellumo_->waitForText(u"Select text first."_s));
    QVERIFY(vellumo_->waitForText(u"vellumo needs a readable selection to continue."_s));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForNoPanel());
    QVERIFY(vellumo_->notes().isEmpty());
}

void TestProgram::doesNotWaitForASilentClipboardOwner()
{
    QVERIFY(editor_->open());
    Application owner(
        {u"clipboard"_s, QStringLiteral(VELLUMO_TEST_CLIPBOARD), {u"--silent"_s}, {}, {}});
    QVERIFY(owner.launch());
    QVERIFY(waitUntil([&] { return owner.standardOutput().contains("ready"_L1); }));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForPanel(1s));
}

void TestProgram::pastesWithoutWaitingForTheOwner()
{
    constexpr quint8 keyV = 55;
    const auto clipboard = [](const QString &argument) {
        return Application::Command{
            u"clipboard"_s, QStringLiteral(VELLUMO_TEST_CLIPBOARD), {argument}, {}, {}};
    };
    const auto own = [](Application &owner) {
        return owner.launch()
            && waitUntil([&] { return owner.standardOutput().contains("ready"_L1); });
    };
    QVERIFY(editor_->open());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());
    QVERIFY(vellumo_->ask(u"Why"_s)); // the field has the keyboard now
    QVERIFY(vellumo_->waitForText(u"「Why」"_s));

    QTemporaryFile file;
    QVERIFY(file.open() && file.write("pasted") > 0 && file.flush());
    Application owner(clipboard(u"text/plain="_s + file.fileName()));
    QVERIFY(own(owner));
    desktop_.chord(Key::ControlLeft, keyV);
    QVERIFY(waitUntil([&] {
        desktop_.tap(Key::Return); // does nothing before the text is there
        return vellumo_->panelText().contains(u"「pasted」"_s);
    }));

    Application silent(clipboard(u"--silent"_s));
    QVERIFY(own(silent));
    desktop_.chord(Key::ControlLeft, keyV);
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel(3s)); // the toolkit alone would wait for 5 s
}

void TestProgram::standsOverAFullScreenWindow()
{
    QVERIFY(editor_->open());
    desktop_.setFullScreen(editor_->window(), true);
    QVERIFY(
        waitUntil([&] { return desktop_.geometry(editor_->window()).size() == QSize(1280, 800); }));
    QVERIFY(editor_->selectNothing());
    QVERIFY(editor_->selectAll());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());
    const auto panel = vellumo_->panel();
    QVERIFY(panel);
    const QRect place = desktop_.geometry(*panel);
    QVERIFY(waitUntil([&] { return desktop_.windowAt({place.center().x(), 20}) == *panel; }));
    QCOMPARE(desktop_.activeWindow(), editor_->window());
    QVERIFY(vellumo_->ask(u"Why"_s));
    QVERIFY(vellumo_->waitForText(u"「Why」"_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    QVERIFY(waitUntil([&] { return desktop_.activeWindow() == editor_->window(); }));
}

void TestProgram::keepsTheNoteWhenItIsEnded_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("interrupted") << SIGINT;
    QTest::newRow("terminated") << SIGTERM;
}

void TestProgram::keepsTheNoteWhenItIsEnded()
{
    QFETCH(int, signal);
    QVERIFY(editor_->open());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());
    vellumo_->process().signal(signal);
    QVERIFY(vellumo_->process().waitForEnd(patience));
    QVERIFY(!vellumo_->process().crashed());
    QCOMPARE(vellumo_->process().exitCode(), 0);
    QCOMPARE(vellumo_->notes().size(), 1);
}

void TestProgram::refusesASecondWriterOfTheSameNotes()
{
    // on another bus, where it cannot reach the first
    const auto second = vellumo_->another(Program::inBackground());
    second->setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    QVERIFY(second->launch());
    QVERIFY(second->waitForEnd(10s));
    QVERIFY(!second->crashed());
    QCOMPARE(second->exitCode(), 1);
    const QString said = second->standardOutput() + second->errorOutput();
    QCOMPARE(said.count(u'\n'), 1);
    QVERIFY2(said.startsWith("vellumo: "_L1), qPrintable(said));
    QVERIFY(vellumo_->process().isRunning());
}

QTEST_MAIN(TestProgram)
#include "test_program.moc"
