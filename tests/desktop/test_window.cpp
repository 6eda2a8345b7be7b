// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"

using namespace vellumo::test;

/// The main window of the built program, used with mouse and keyboard and found through
/// accessibility.
class TestWindow : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void leadsFromSignInToANote()
    {
        QVERIFY(vellumo_->start({}));
        QVERIFY(shows(u"heading"_s, u"Welcome to vellumo"_s));
        QVERIFY(waitUntil([this] { return desktop_.activeWindow() == window(); }));
        QVERIFY(vellumo_->find(u"Continue with Google"_s, u"button"_s));

        QVERIFY(vellumo_->click(u"Use without an account"_s, u"button"_s));
        QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
        QVERIFY(vellumo_->click(u"Settings"_s, u"button"_s));
        QVERIFY(vellumo_->click(u"中文"_s, u"radio button"_s));
        QVERIFY(shows(u"heading"_s, u"设置"_s));
        QVERIFY(shows(u"page tab"_s, u"笔记"_s));
        QVERIFY(vellumo_->click(u"English"_s, u"radio button"_s));
        QVERIFY(shows(u"heading"_s, u"Settings"_s));
        desktop_.tap(Key::Escape);
        QVERIFY(waitUntil([this] { return !vellumo_->find(u"Settings"_s, u"heading"_s); }));

        QVERIFY(vellumo_->click(u"Notes"_s, u"page tab"_s));
        QVERIFY(shows(u"heading"_s, u"Notes"_s));
        desktop_.type(u"every"_s); // the search has the keyboard
        QVERIFY(shows(u"label"_s, u"1 of 1"_s));
        QVERIFY(vellumo_->click(u"ubiquitous"_s, u"list item"_s));
        QVERIFY(vellumo_->click(u"Copy"_s, u"button"_s));
        QVERIFY(waitUntil([] {
            return outputOf(u"xclip"_s, {u"-o"_s, u"-selection"_s, u"clipboard"_s})
                .contains("found everywhere");
        }));
        QVERIFY(vellumo_->click(u"Ask a follow-up"_s, u"button"_s));
        QVERIFY(vellumo_->waitForPanel() && vellumo_->waitForAnswer());
        QVERIFY(waitUntil([this] { return desktop_.activeWindow() == vellumo_->panel(); }));
        desktop_.type(u"Why"_s);
        desktop_.tap(Key::Return);
        QVERIFY(vellumo_->waitForText(u"「Why」"_s));
        QVERIFY(waitUntil([this] { // a click is lost on what the growing panel still covers
            return vellumo_->click(u"Open in vellumo"_s, u"button"_s)
                && vellumo_->waitForNoPanel(500ms);
        }));
        QVERIFY(waitUntil([this] {
            const QList<QJsonObject> notes = vellumo_->notes();
            return notes.size() == 1 && notes[0]["followUps"_L1].toArray().size() == 1;
        }));
        QVERIFY(shows(u"label"_s, u"Why"_s)); // on the page of the note
    }

    void comesBackWhereItWas()
    {
        QVERIFY(vellumo_->start({}));
        QVERIFY(vellumo_->click(u"Use without an account"_s, u"button"_s));
        QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
        const QRect place = desktop_.geometry(*window());
        const QPoint frame(place.center().x(), place.top() - 10);
        desktop_.drag(frame, frame + QPoint(37, 21));
        QVERIFY(
            waitUntil([&] { return desktop_.geometry(*window()).topLeft() != place.topLeft(); }));
        const QRect moved = desktop_.geometry(*window());

        const auto isClosed = [this] {
            desktop_.chord(Key::ControlLeft, Key::W);
            return waitUntil([this] { return !window(); }, 500ms);
        };
        QVERIFY(waitUntil(isClosed));
        QVERIFY(vellumo_->process().isRunning());
        QCOMPARE(vellumo_->startAgain(), 0);
        QVERIFY(waitUntil([&] { return window() && desktop_.geometry(*window()) == moved; }));
        QVERIFY(waitUntil([this] { return desktop_.activeWindow() == window(); }));

        // a start in the background shows no window, and use without an account is remembered
        QCOMPARE(vellumo_->process().end(), 0);
        QVERIFY(vellumo_->start());
        QVERIFY(shows(u"button"_s, u"Notes 1"_s)); // the pill
        QVERIFY(!window());
        QCOMPARE(vellumo_->startAgain(), 0);
        QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
    }

    void startsWithoutThePill()
    {
        vellumo_->setSetting(u"showsPill"_s, u"false"_s);
        QVERIFY(vellumo_->start({}));
        QVERIFY(vellumo_->click(u"Use without an account"_s, u"button"_s));
        QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
        QVERIFY(!vellumo_->find(u"Notes 1"_s, u"button"_s));
        QCOMPARE(vellumo_->process().end(), 0);
    }

    void staysBehindWhenThePanelIsClicked()
    {
        QVERIFY(vellumo_->start({}));
        QVERIFY(vellumo_->click(u"Use without an account"_s, u"button"_s));
        Application editor(qtTextEdit(u"/dev/null"_s));
        const auto reading = editor.start(desktop_);
        QVERIFY(reading && desktop_.activate(*reading));
        const QPoint shared = (desktop_.geometry(*reading) & desktop_.geometry(*window())).center();
        QVERIFY(waitUntil([&] { return desktop_.windowAt(shared) == *reading; }));

        // The panel reports that nothing is selected. It closes if the program learns only then
        // that the editor has come to the front.
        const auto panelHasKeyboard = [this] {
            if (!vellumo_->panel()
                && (vellumo_->startAgain({u"--explain"_s}) != 0 || !vellumo_->waitForPanel(2s)))
                return false;
            const auto panel = vellumo_->panel();
            if (!panel)
                return false;
            desktop_.click(desktop_.geometry(*panel).center());
            return waitUntil([&] { return desktop_.activeWindow() == *panel; }, 1s);
        };
        QVERIFY(waitUntil(panelHasKeyboard));
        QCOMPARE(desktop_.windowAt(shared), *reading);
    }

private:
    void prepare() override
    {
        vellumo_->setEnvironment(u"FIREBASE_API_KEY"_s, u"k"_s); // an account is offered
        QVERIFY(
            vellumo_->writeNotes({QJsonObject{{u"id"_s, u"00000000-0000-4000-8000-000000000001"_s},
                                              {u"sourceText"_s, u"ubiquitous"_s},
                                              {u"translation"_s, u"无处不在"_s},
                                              {u"explanation"_s, u"found everywhere"_s},
                                              {u"createdAt"_s, 800000000},
                                              {u"followUps"_s, QJsonArray{}}}}));
    }

    [[nodiscard]] std::optional<WindowId> window() const
    {
        const QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
        for (const WindowId window : windows) {
            if (desktop_.geometry(window).width() >= 640)
                return window;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool shows(const QString &role, const QString &name) const
    {
        return waitUntil([&] { return vellumo_->find(name, role).has_value(); });
    }
};

QTEST_MAIN(TestWindow)
#include "test_window.moc"

#include <QJsonObject>
