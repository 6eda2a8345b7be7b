// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/HttpServer.h"
#include "support/PageServer.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;

/// What a chat-completions service sends when the model replies with this.
HttpAnswer modelSays(const QString &reply)
{
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, reply}};
    const QJsonArray choices{QJsonObject{{u"message"_s, message}}};
    return {.body = QJsonDocument(QJsonObject{{u"choices"_s, choices}}).toJson()};
}

} // namespace

/// The built program on a desktop with a window manager, the way a person meets it.
class TestProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void explainsWhatIsSelectedOnAPageAndKeepsANote();
    void asksTheConfiguredService();
    void closesAsAPersonExpects_data();
    void closesAsAPersonExpects();
    void takesTwoPressesForADoubleTap_data();
    void takesTwoPressesForADoubleTap();
    void saysWhatIsMissing_data();
    void saysWhatIsMissing();
    void doesNotWaitForASilentClipboardOwner();
    void standsOverAFullScreenWindow();
    void keepsTheNoteWhenItIsEnded_data();
    void keepsTheNoteWhenItIsEnded();
    void refusesASecondWriterOfTheSameNotes();

private:
    /// An editor in front with one sentence selected.
    bool openEditor();
    /// Presses a key with Control until so many characters are selected in the editor.
    bool select(qsizetype characters, quint8 controlKey) const;
    bool selectAll() const;
    bool selectNothing() const;

    Desktop desktop_;
    std::unique_ptr<QTemporaryDir> files_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Application> editor_;
    WindowId editorWindow_ = 0;
};

void TestProgram::init()
{
    files_ = std::make_unique<QTemporaryDir>();
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

bool TestProgram::openEditor()
{
    QFile file(files_->filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(sentence.toUtf8()) < 0)
        return false;
    file.close();
    editor_ = std::make_unique<Application>(qtTextEdit(file.fileName()));
    const auto window = editor_->start(desktop_);
    if (!window || !desktop_.activate(*window))
        return false;
    editorWindow_ = *window;
    return selectAll();
}

bool TestProgram::select(qsizetype characters, quint8 controlKey) const
{
    // keys may go astray until the window has the keyboard, and the editor tells what changes
    const QString expected = u"selected %1\n"_s.arg(characters);
    return waitUntil(
        [&] {
            desktop_.chord(Key::ControlLeft, controlKey);
            return waitUntil([&] { return editor_->standardOutput().endsWith(expected); }, 500ms);
        },
        10s);
}

bool TestProgram::selectAll() const
{
    return select(sentence.size(), Key::A);
}

bool TestProgram::selectNothing() const
{
    return select(0, Key::Home);
}

void TestProgram::explainsWhatIsSelectedOnAPageAndKeepsANote()
{
    PageServer pages;
    pages.setBody(u"tides"_s, u"<p id=sentence>"_s + sentence + u"</p><p id=rest>Rest.</p>"_s);
    const QString address = pages.address(u"tides?day=2#turn"_s);
    Application browser(firefox(address, u"tides"_s, files_->filePath(u"profile"_s)));
    if (!browser.isInstalled())
        QSKIP("Firefox is not installed");
    const auto window = browser.start(desktop_);
    QVERIFY(window && desktop_.activate(*window));
    int step = 0;
    QVERIFY(waitUntil(
        [&] {
            desktop_.moveTo(desktop_.geometry(*window).center() + QPoint(++step % 9, 0));
            return pages.startOf(u"tides"_s, u"sentence"_s).has_value();
        },
        20s));
    desktop_.drag(*pages.startOf(u"tides"_s, u"sentence"_s),
                  *pages.endOf(u"tides"_s, u"sentence"_s));
    QVERIFY(waitUntil([&] { return pages.selection(u"tides"_s) == sentence; }));

    desktop_.doubleTap();
    const auto panel = vellumo_->waitForPanel();
    QVERIFY(panel);
    // shown without taking the keyboard from the page
    QCOMPARE(desktop_.activeWindow(), *window);
    QVERIFY(vellumo_->waitForAnswer());
    QVERIFY(pages.hasFocus(u"tides"_s));
    QCOMPARE(pages.selection(u"tides"_s), sentence);

    QVERIFY(vellumo_->ask(u"Why twice"_s));
    QVERIFY(vellumo_->waitForText(u"「Why twice」"_s));
    QVERIFY(vellumo_->notes().isEmpty());
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    // the keyboard is back where it was
    QVERIFY(waitUntil([&] { return desktop_.activeWindow() == *window; }));

    QVERIFY(vellumo_->waitForNotes(1));
    const QJsonObject note = vellumo_->notes().constFirst();
    QCOMPARE(note["sourceText"_L1].toString(), sentence);
    QCOMPARE(note["context"_L1]["key"_L1].toString(), u"web-url:"_s + address);
    QCOMPARE(note["context"_L1]["displayName"_L1].toString(), u"127.0.0.1"_s);
    QCOMPARE(note["context"_L1]["source"_L1].toString(), u"webURL"_s);
    const QJsonArray followUps = note["followUps"_L1].toArray();
    QCOMPARE(followUps.size(), 1);
    QCOMPARE(followUps.at(0)["question"_L1].toString(), u"Why twice"_s);
    QVERIFY(followUps.at(0)["answer"_L1].toString().contains("Why twice"_L1));
}

void TestProgram::asksTheConfiguredService()
{
    HttpServer server;
    const QByteArray target = "/v1/chat/completions";
    vellumo_->process().end();
    vellumo_->setEnvironment(u"OPENAI_API_KEY"_s, u"sk-1"_s);
    vellumo_->setEnvironment(u"OPENAI_BASE_URL"_s, server.url(u"/v1"_s).toString());
    vellumo_->setEnvironment(u"VELLUMO_MODEL"_s, u"model-1"_s);
    QVERIFY(vellumo_->start());
    QVERIFY(vellumo_->process().standardOutput().contains(
        "vellumo: using OpenAI explanation service\n"_L1));

    QVERIFY(openEditor());
    server.answer(
        "POST", target,
        modelSays(uR"({"intent": "x", "translation": "", "explanation": "It is the moon."})"_s));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForText(u"It is the moon."_s));
    QVERIFY(!vellumo_->panelText().contains("sample"_L1, Qt::CaseInsensitive));
    server.answer("POST", target, modelSays(u"\nBecause it turns.\n"_s));
    QVERIFY(vellumo_->ask(u"Why twice"_s));
    QVERIFY(vellumo_->waitForText(u"Because it turns."_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNotes(1));
    const QJsonObject note = vellumo_->notes().constFirst();
    QCOMPARE(note["sourceText"_L1].toString(), sentence);
    QCOMPARE(note["explanation"_L1].toString(), u"It is the moon."_s);
    QCOMPARE(note["followUps"_L1][0]["answer"_L1].toString(), u"Because it turns."_s);

    QCOMPARE(server.requests().size(), 2);
    QCOMPARE(server.requests().constLast().connection, 1);
    const auto body = QJsonDocument::fromJson(server.requests().constLast().body);
    QCOMPARE(body["model"_L1].toString(), u"model-1"_s);
    QCOMPARE(body["messages"_L1][1]["content"_L1].toString(), u"Selected text: "_s + sentence);
    QCOMPARE(body["messages"_L1][3]["content"_L1].toString(), u"Why twice"_s);

    server.answer("POST", target, {.status = "500 Oops", .body = "<html>secret</html>"});
    QVERIFY(waitUntil([&] { return desktop_.activeWindow() == editorWindow_; }));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForText(u"vellumo could not explain this yet."_s));
    const auto says = "vellumo: no answer from the explanation service: status 500\n"_L1;
    QVERIFY(waitUntil([&] { return vellumo_->process().standardOutput().endsWith(says); }));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForNoPanel());
    QCOMPARE(vellumo_->notes().size(), 1);
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
    QVERIFY(openEditor());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());

    // a click inside leaves it open
    const QRect place = desktop_.geometry(vellumo_->panel().value());
    desktop_.click({place.center().x(), place.top() + 25});
    QVERIFY(!vellumo_->waitForNoPanel(300ms));

    const QPoint elsewhere = desktop_.geometry(editorWindow_).center();
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

void TestProgram::takesTwoPressesForADoubleTap_data()
{
    using Keys = std::function<bool(const Desktop &)>; // answers whether a panel is expected
    QTest::addColumn<Keys>("keys");
    // what counts is the distance as the server dates it, to the millisecond
    QTest::newRow("just within the time")
        << Keys([](const Desktop &desktop) { return desktop.doubleTap(355ms) <= 360ms; });
    QTest::newRow("just beyond the time")
        << Keys([](const Desktop &desktop) { return desktop.doubleTap(366ms) <= 360ms; });
    QTest::newRow("left, then right") << Keys([](const Desktop &desktop) {
        desktop.doubleTap(150ms, Key::AltLeft, Key::AltRight);
        return true;
    });
    QTest::newRow("a single press") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::AltLeft);
        return false;
    });
    QTest::newRow("Caps Lock on") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::CapsLock);
        desktop.doubleTap();
        desktop.tap(Key::CapsLock);
        return false;
    });
    QTest::newRow("Num Lock on") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::NumLock);
        desktop.doubleTap();
        desktop.tap(Key::NumLock);
        return true;
    });
    QTest::newRow("Shift held") << Keys([](const Desktop &desktop) {
        desktop.press(Key::ShiftLeft);
        desktop.doubleTap();
        desktop.release(Key::ShiftLeft);
        return false;
    });
    QTest::newRow("Shift released twice while Alt is held") << Keys([](const Desktop &desktop) {
        desktop.press(Key::ShiftLeft);
        desktop.press(Key::AltLeft);
        desktop.release(Key::ShiftLeft);
        desktop.tap(Key::ShiftLeft);
        desktop.release(Key::AltLeft);
        desktop.sync();
        return true;
    });
    QTest::newRow("letters between the presses") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::AltLeft);
        desktop.tap(Key::ControlLeft);
        desktop.tap(Key::AltLeft);
        return true;
    });
}

void TestProgram::takesTwoPressesForADoubleTap()
{
    using Keys = std::function<bool(const Desktop &)>;
    QFETCH(Keys, keys);
    QVERIFY(openEditor());
    const bool expected = keys(desktop_);
    if (expected) {
        QVERIFY(vellumo_->waitForPanel());
        return;
    }
    QVERIFY(!vellumo_->waitForPanel(600ms));
    // and it was not deaf: the time of a pending press is over, so that a pair counts
    desktop_.tap(Key::Escape); // a single press may have moved the focus to the menu bar
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForPanel());
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
    QVERIFY(openEditor());
    if (dies) {
        desktop_.tap(Key::AltLeft);
        editor_->killAll();
    } else {
        QVERIFY(selectNothing());
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
    QVERIFY(openEditor());
    Application owner(
        {u"clipboard"_s, QStringLiteral(VELLUMO_TEST_CLIPBOARD), {u"--silent"_s}, {}, {}});
    QVERIFY(owner.launch());
    QVERIFY(waitUntil([&] { return owner.standardOutput().contains("ready"_L1); }));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForPanel(1s));
}

void TestProgram::standsOverAFullScreenWindow()
{
    QVERIFY(openEditor());
    desktop_.setFullScreen(editorWindow_, true);
    QVERIFY(waitUntil([&] { return desktop_.geometry(editorWindow_).size() == QSize(1280, 800); }));
    QVERIFY(selectNothing());
    QVERIFY(selectAll());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForAnswer());
    const auto panel = vellumo_->panel();
    QVERIFY(panel);
    const QRect place = desktop_.geometry(*panel);
    QVERIFY(waitUntil([&] { return desktop_.windowAt({place.center().x(), 20}) == *panel; }));
    QCOMPARE(desktop_.activeWindow(), editorWindow_);
    QVERIFY(vellumo_->ask(u"Why"_s));
    QVERIFY(vellumo_->waitForText(u"「Why」"_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    QVERIFY(waitUntil([&] { return desktop_.activeWindow() == editorWindow_; }));
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
    QVERIFY(openEditor());
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
    const auto second = vellumo_->another();
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
