// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"
#include "desktop/ReadApplications.h"
#include "driver/WebPage.h"
#include "platform/x11/PeerProcess.h"
#include <QJsonObject>
#include <QTemporaryFile>
#include <csignal>

using namespace vellumo::test;

/// The built program on a desktop with a window manager, driven as by a user.
class TestProgram : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void explainsWhatIsSelectedOnAPageAndKeepsANote()
    {
        WebPage page(desktop_, u"tides"_s,
                     u"<p id=sentence>"_s + sentence + u"</p><p id=rest>Rest.</p>"_s,
                     u"?day=2#turn"_s);
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
        QVERIFY(waitUntil([this] { return vellumo_->openNote().isEmpty(); }));
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

    void closesAsAPersonExpects_data()
    {
        QTest::addColumn<bool>("isClicked");
        QTest::newRow("a click elsewhere") << true;
        QTest::newRow("another application") << false;
    }

    void closesAsAPersonExpects()
    {
        QFETCH(bool, isClicked);
        QVERIFY(editor_->open());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForAnswer());

        // a click inside leaves it open
        const QRect place = desktop_.geometry(vellumo_->panel().value());
        desktop_.click({place.center().x(), place.top() + 25});
        QVERIFY(!vellumo_->waitForNoPanel(300ms));

        Application other(xterm(u"exec cat"_s));
        if (isClicked) {
            desktop_.click(desktop_.geometry(editor_->window()).center());
        } else {
            const auto window = other.start(desktop_);
            QVERIFY(window && desktop_.activate(*window));
        }
        QVERIFY(vellumo_->waitForNoPanel());
        QVERIFY(vellumo_->waitForNotes(1));
        QCOMPARE(vellumo_->notes().constFirst()["sourceText"_L1].toString(), sentence);
    }

    void saysWhatIsMissing_data()
    {
        QTest::addColumn<bool>("dies");
        QTest::newRow("nothing is selected") << false;
        QTest::newRow("the application dies between the presses") << true;
    }

    void saysWhatIsMissing()
    {
        QFETCH(bool, dies);
        QVERIFY(editor_->open());
        if (dies) {
            desktop_.tap(Key::AltLeft);
            editor_->process().killAll();
        } else {
            QVERIFY(editor_->selectNothing());
        }
        desktop_.doubleTap(); // one pair, even if its first press follows the last pair closely
        QVERIFY(vellumo_->waitForPanel());
        QVERIFY(vellumo_->waitForText(u"Select text first."_s));
        QVERIFY(vellumo_->waitForText(u"vellumo needs a readable selection to continue."_s));
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForNoPanel());
        QVERIFY(vellumo_->notes().isEmpty());
    }

    void pastesWithoutWaitingForTheOwner()
    {
        constexpr quint8 keyV = 55;
        QVERIFY(editor_->open());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForAnswer());
        QVERIFY(vellumo_->ask(u"Why"_s)); // the field has the keyboard now
        QVERIFY(vellumo_->waitForText(u"「Why」"_s));

        outputOf(u"xclip"_s, {u"-i"_s, u"-selection"_s, u"clipboard"_s}, "pasted");
        desktop_.chord(Key::ControlLeft, keyV);
        QVERIFY(waitUntil([&] {
            desktop_.tap(Key::Return); // does nothing before the text is there
            return vellumo_->panelText().contains(u"「pasted」"_s);
        }));

        QTemporaryFile file;
        QVERIFY(file.open());
        const PeerProcess silent({u"stall"_s, u"UTF8_STRING|UTF8_STRING|8|"_s + file.fileName()});
        QVERIFY(silent.isReady());
        desktop_.chord(Key::ControlLeft, keyV);
        desktop_.tap(Key::Escape);
        QVERIFY(vellumo_->waitForNoPanel(3s)); // the toolkit alone would wait for 5 s
    }

    void coversAFullScreenWindow()
    {
        QVERIFY(editor_->open());
        desktop_.setFullScreen(editor_->window(), true);
        QVERIFY(waitUntil(
            [&] { return desktop_.geometry(editor_->window()).size() == QSize(1280, 800); }));
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

    void keepsTheNoteWhenItIsEnded_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("interrupted") << SIGINT;
        QTest::newRow("terminated") << SIGTERM;
    }

    void keepsTheNoteWhenItIsEnded()
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

    /// As when the window system crashes, which ends the program at once.
    void keepsTheNoteWhenItIsKilled()
    {
        QVERIFY(editor_->open());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForAnswer());
        QVERIFY(vellumo_->ask(u"Why"_s));
        QVERIFY(vellumo_->waitForText(u"「Why」"_s));
        QVERIFY(waitUntil([this] {
            const auto open = vellumo_->openNote();
            return open.size() == 1 && open.constFirst()["followUps"_L1].toArray().size() == 1;
        }));
        vellumo_->process().signal(SIGKILL);
        QVERIFY(vellumo_->process().waitForEnd(patience));
        QVERIFY(vellumo_->notes().isEmpty());

        QVERIFY(vellumo_->start());
        QVERIFY(vellumo_->waitForNotes(1));
        const QJsonObject note = vellumo_->notes().constFirst();
        QCOMPARE(note["sourceText"_L1].toString(), sentence);
        QCOMPARE(note["followUps"_L1].toArray().size(), 1);
        QVERIFY(vellumo_->openNote().isEmpty());
    }

private:
    void prepare() override { QVERIFY(vellumo_->start()); }
};

QTEST_MAIN(TestProgram)
#include "test_program.moc"
