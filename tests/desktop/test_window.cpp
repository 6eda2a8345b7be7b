// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/AccessibleTree.h"
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int leastWindow = 640;

QJsonDocument someNotes()
{
    const QJsonObject note{{u"id"_s, u"00000000-0000-4000-8000-000000000001"_s},
                           {u"sourceText"_s, u"ubiquitous"_s},
                           {u"translation"_s, u"无处不在"_s},
                           {u"explanation"_s, u"found everywhere"_s},
                           {u"createdAt"_s, 800000000},
                           {u"followUps"_s, QJsonArray{}}};
    const QJsonObject context{{u"key"_s, u"web-url:https://a.test/"_s},
                              {u"displayName"_s, u"a.test"_s},
                              {u"source"_s, u"webURL"_s}};
    return QJsonDocument(QJsonObject{
        {u"buckets"_s,
         QJsonArray{QJsonObject{{u"context"_s, context}, {u"notes"_s, QJsonArray{note}}}}}});
}

} // namespace

/// The main window of the built program, used with mouse and keyboard and found by what it tells
/// screen readers.
class TestWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void leadsFromSignInToANote();
    void comesBackWhereItWas();
    void staysBehindWhenThePanelIsClicked();

private:
    [[nodiscard]] std::optional<WindowId> window() const;
    [[nodiscard]] std::optional<QRect> find(const QString &role, const QString &name) const;
    [[nodiscard]] bool shows(const QString &role, const QString &name) const;
    /// Clicks what screen readers meet under this name, once it rests in one place.
    bool click(const QString &role, const QString &name) const;
    bool startAgain(const QStringList &arguments = {}) const;

    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
};

void TestWindow::init()
{
    vellumo_ = std::make_unique<Program>(
        desktop_, QStringLiteral(VELLUMO_PROGRAM),
        u"window-%1"_s.arg(QLatin1StringView(QTest::currentTestFunction())));
    QDir().mkpath(QFileInfo(vellumo_->notesFile()).path());
    QFile file(vellumo_->notesFile());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(someNotes().toJson()) > 0);
}

void TestWindow::cleanup()
{
    if (QTest::currentTestFailed() && vellumo_->hasStarted())
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput() << vellumo_->panelText();
    vellumo_.reset();
}

std::optional<WindowId> TestWindow::window() const
{
    const QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
    for (const WindowId window : windows) {
        if (desktop_.geometry(window).width() >= leastWindow)
            return window;
    }
    return std::nullopt;
}

std::optional<QRect> TestWindow::find(const QString &role, const QString &name) const
{
    const auto items = accessibleItems(vellumo_->process().processIdentifier());
    for (const AccessibleItem &item : items) {
        if (item.role.endsWith(role) && item.name == name)
            return item.extents;
    }
    return std::nullopt;
}

bool TestWindow::shows(const QString &role, const QString &name) const
{
    return waitUntil([&] { return find(role, name).has_value(); });
}

bool TestWindow::click(const QString &role, const QString &name) const
{
    std::optional<QRect> place;
    const bool rests = waitUntil([&] {
        const auto before = std::exchange(place, find(role, name));
        return place && place == before;
    });
    const auto isInFront = [&] {
        return desktop_.windows(u"vellumo"_s).contains(desktop_.windowAt(place->center()));
    };
    if (!rests || !waitUntil(isInFront))
        return false;
    desktop_.click(place->center());
    return true;
}

bool TestWindow::startAgain(const QStringList &arguments) const
{
    const auto second = vellumo_->another(arguments);
    return second->launch() && second->waitForEnd(20s) && second->exitCode() == 0;
}

void TestWindow::leadsFromSignInToANote()
{
    QVERIFY(vellumo_->start({}));
    QVERIFY(shows(u"heading"_s, u"Welcome to vellumo"_s));
    QVERIFY(waitUntil([this] { return desktop_.activeWindow() == window(); }));
    QVERIFY(find(u"button"_s, u"Continue with Google"_s));

    QVERIFY(click(u"button"_s, u"Use without an account"_s));
    QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
    QVERIFY(click(u"button"_s, u"Settings"_s));
    QVERIFY(click(u"radio button"_s, u"中文"_s));
    QVERIFY(shows(u"heading"_s, u"设置"_s));
    QVERIFY(shows(u"page tab"_s, u"笔记"_s));
    QVERIFY(click(u"radio button"_s, u"English"_s));
    QVERIFY(shows(u"heading"_s, u"Settings"_s));
    desktop_.tap(Key::Escape);
    QVERIFY(waitUntil([this] { return !find(u"heading"_s, u"Settings"_s); }));

    QVERIFY(click(u"page tab"_s, u"Notes"_s));
    QVERIFY(shows(u"heading"_s, u"Notes"_s));
    desktop_.type(u"every"_s); // the search has the keyboard
    QVERIFY(shows(u"label"_s, u"1 of 1"_s));
    QVERIFY(click(u"list item"_s, u"ubiquitous"_s));
    QVERIFY(click(u"button"_s, u"Ask further"_s));
    QVERIFY(vellumo_->waitForPanel() && vellumo_->waitForAnswer());
    QVERIFY(waitUntil([this] { return desktop_.activeWindow() == vellumo_->panel(); }));
    desktop_.type(u"Why"_s);
    desktop_.tap(Key::Return);
    QVERIFY(vellumo_->waitForText(u"「Why」"_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    QVERIFY(waitUntil([this] {
        const QList<QJsonObject> notes = vellumo_->notes();
        return notes.size() == 1 && notes[0]["followUps"_L1].toArray().size() == 1;
    }));
    QVERIFY(shows(u"label"_s, u"Why"_s)); // on the page of the note
}

void TestWindow::comesBackWhereItWas()
{
    QVERIFY(vellumo_->start({}));
    QVERIFY(click(u"button"_s, u"Use without an account"_s));
    QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
    const QRect place = desktop_.geometry(*window());
    const QPoint frame(place.center().x(), place.top() - 10);
    desktop_.drag(frame, frame + QPoint(37, 21));
    QVERIFY(waitUntil([&] { return desktop_.geometry(*window()).topLeft() != place.topLeft(); }));
    const QRect moved = desktop_.geometry(*window());

    const auto isClosed = [this] {
        desktop_.chord(Key::ControlLeft, Key::W);
        return waitUntil([this] { return !window(); }, 500ms);
    };
    QVERIFY(waitUntil(isClosed));
    QVERIFY(vellumo_->process().isRunning());
    QVERIFY(startAgain());
    QVERIFY(waitUntil([&] { return window() && desktop_.geometry(*window()) == moved; }));
    QVERIFY(waitUntil([this] { return desktop_.activeWindow() == window(); }));

    // a start without a window shows none, and remembers who goes without an account
    QCOMPARE(vellumo_->process().end(), 0);
    QVERIFY(vellumo_->start());
    QVERIFY(shows(u"button"_s, u"Notes 1"_s)); // the pill
    QVERIFY(!window());
    QVERIFY(startAgain());
    QVERIFY(shows(u"list item"_s, u"ubiquitous"_s));
}

void TestWindow::staysBehindWhenThePanelIsClicked()
{
    QVERIFY(vellumo_->start({}));
    QVERIFY(click(u"button"_s, u"Use without an account"_s));
    Application editor(qtTextEdit(u"/dev/null"_s));
    const auto reading = editor.start(desktop_);
    QVERIFY(reading && desktop_.activate(*reading));
    const QPoint shared = (desktop_.geometry(*reading) & desktop_.geometry(*window())).center();
    QVERIFY(waitUntil([&] { return desktop_.windowAt(shared) == *reading; }));

    // Nothing is selected: the panel says so. It goes again if the program learns only then that
    // the editor has come to the front.
    const auto panelHasKeyboard = [this] {
        if (!vellumo_->panel() && (!startAgain({u"--explain"_s}) || !vellumo_->waitForPanel(2s)))
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

QTEST_MAIN(TestWindow)
#include "test_window.moc"
