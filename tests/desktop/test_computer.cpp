// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/AccessibleTree.h"
#include "support/Desktop.h"
#include "support/Editor.h"
#include "support/HttpServer.h"
#include "support/Keyring.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QDirIterator>
#include <QJsonDocument>
#include <QTest>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;
const QByteArray target = "/v1/chat/completions";
const QString key = u"sk-secret-1"_s;

HttpAnswer modelSays(const QString &explanation)
{
    const QJsonObject payload{
        {u"intent"_s, u"x"_s}, {u"translation"_s, QString()}, {u"explanation"_s, explanation}};
    const QString content = QString::fromUtf8(QJsonDocument(payload).toJson());
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, content}};
    const QJsonArray choices{QJsonObject{{u"message"_s, message}}};
    return {.body = QJsonDocument(QJsonObject{{u"choices"_s, choices}}).toJson()};
}

} // namespace

/// The page of this computer in the built program: a service and the desktop's real keyring, and
/// the permission.
class TestComputer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void takesAServiceAndKeepsItsKey();
    void takesThePermissionBackWithoutAWarning();

private:
    [[nodiscard]] std::optional<QRect> find(const QString &name) const;
    /// Clicks the button or the like of this name, once it rests in one place.
    bool click(const QString &name) const;
    /// Clicks this button of the panel until it is gone, which takes a panel that has settled.
    bool goesToService(const QString &button);
    /// Double-taps on the selected sentence until the panel says this.
    bool reads(const QString &text);

    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Editor> editor_;
};

void TestComputer::init()
{
    vellumo_ = std::make_unique<Program>(
        desktop_, QStringLiteral(VELLUMO_PROGRAM),
        u"computer-%1"_s.arg(QLatin1StringView(QTest::currentTestFunction())));
    editor_ = std::make_unique<Editor>(desktop_, sentence);
}

void TestComputer::cleanup()
{
    if (QTest::currentTestFailed() && vellumo_->hasStarted()) {
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput() << vellumo_->panelText();
    }
    editor_.reset();
    vellumo_.reset();
}

std::optional<QRect> TestComputer::find(const QString &name) const
{
    const auto items = accessibleItems(vellumo_->process().processIdentifier());
    for (const AccessibleItem &item : items) {
        if (item.name == name && item.role != "label"_L1)
            return item.extents;
    }
    return std::nullopt;
}

bool TestComputer::click(const QString &name) const
{
    std::optional<QRect> place;
    const bool rests = waitUntil([&] {
        const auto before = std::exchange(place, find(name));
        return place && place == before
            && desktop_.windows(u"vellumo"_s).contains(desktop_.windowAt(place->center()));
    });
    if (rests)
        desktop_.click(place->center());
    return rests;
}

bool TestComputer::goesToService(const QString &button)
{
    return waitUntil([&] { return click(button) && vellumo_->waitForNoPanel(1s); })
        && waitUntil([this] { return find(u"Base address"_s).has_value(); });
}

bool TestComputer::reads(const QString &text)
{
    return waitUntil([&] {
        return vellumo_->dismissPanel() && desktop_.activate(editor_->window())
            && editor_->selectAll() && (desktop_.doubleTap(), vellumo_->waitForPanel(3s))
            && waitUntil([&] { return vellumo_->panelText().contains(text); }, 3s);
    });
}

void TestComputer::takesAServiceAndKeepsItsKey()
{
    HttpServer server;
    server.answer("POST", target, modelSays(u"It is the moon."_s));
    QVERIFY(vellumo_->start() && editor_->open());
    QVERIFY(reads(u"A sample answer"_s));
    QVERIFY(goesToService(u"Set up a service"_s));
    const auto hasKeyboard = [this] {
        const WindowId active = desktop_.activeWindow();
        return desktop_.windows(u"vellumo"_s).contains(active) && active != vellumo_->panel();
    };
    QVERIFY(waitUntil(hasKeyboard));
    desktop_.type(server.url(u"/v1"_s).toString());
    desktop_.tap(Key::Tab);
    desktop_.type(u"model-1"_s);
    desktop_.tap(Key::Tab);
    desktop_.type(key);
    QVERIFY(waitUntil([this] { return find(u"Show the key"_s).has_value(); }));
    desktop_.chord(Key::ControlLeft, Key::A);
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForText(u"Select text first."_s)); // it is no reading matter
    QVERIFY(vellumo_->dismissPanel());
    desktop_.tap(Key::Return);
    QVERIFY(vellumo_->waitForText(u"The key is in your keyring"_s));
    const QString account = u"serviceKey:"_s + server.url(QString()).toString();
    QCOMPARE(Keyring::lookUp(account), key.toUtf8());

    QVERIFY(reads(u"It is the moon."_s));
    QCOMPARE(server.requests().constLast().header("Authorization"),
             QByteArrayList{"Bearer sk-secret-1"});
    QVERIFY(server.requests().constLast().body.contains("model-1"));
    QVERIFY(vellumo_->dismissPanel());
    QByteArray everything = vellumo_->process().standardOutput().toUtf8();
    QCOMPARE(vellumo_->process().end(), 0);

    server.forgetRequests();
    QVERIFY(vellumo_->start());
    QVERIFY(reads(u"It is the moon."_s));
    for (const HttpReceived &request : server.requests())
        QCOMPARE(request.header("Authorization"), QByteArrayList{"Bearer sk-secret-1"});
    QVERIFY(vellumo_->dismissPanel());

    everything += vellumo_->process().standardOutput().toUtf8();
    QDirIterator files(qEnvironmentVariable("HOME") + u"/computer-takesAServiceAndKeepsItsKey"_s,
                       QDir::Files, QDirIterator::Subdirectories);
    bool hasModel = false;
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        hasModel = hasModel || content.contains("model-1");
        everything += content;
    }
    QVERIFY(hasModel && !everything.contains(key.toUtf8()));

    // a key that is not accepted: the panel leads back here
    server.answer("POST", target, {.status = "401 No"});
    QVERIFY(reads(u"Check the service"_s));
    QVERIFY(goesToService(u"Check the service"_s));
    QVERIFY(vellumo_->waitForText(u"The service wants a key, or refused the one it got (401)."_s));
}

void TestComputer::takesThePermissionBackWithoutAWarning()
{
    QVERIFY(vellumo_->start() && editor_->open());
    QVERIFY(reads(u"A sample answer"_s));
    QVERIFY(goesToService(u"Set up a service"_s));
    desktop_.tap(Key::PageUp);
    QVERIFY(click(u"Take it back"_s));
    QVERIFY(waitUntil([this] { return find(u"Allow"_s).has_value(); }));
    QVERIFY(reads(u"vellumo needs Accessibility permission"_s));
    const auto warns = [this] {
        return vellumo_->panelText().contains("vellumo lost Accessibility permission"_L1);
    };
    QVERIFY(vellumo_->dismissPanel());
    QVERIFY(click(u"Allow"_s)); // on the page, whose window looks at the permission as it activates
    // now the question stands, which would wait behind a warning; its button has the same name
    QVERIFY(waitUntil([this] { return find(u"Not now"_s).has_value(); }));
    QVERIFY(!warns());
    const auto allows = [this] {
        const auto refusal = find(u"Not now"_s);
        const auto items = accessibleItems(vellumo_->process().processIdentifier());
        for (const AccessibleItem &item : items) {
            if (refusal && item.name == "Allow"_L1
                && desktop_.windowAt(item.extents.center()) == desktop_.windowAt(refusal->center()))
                desktop_.click(item.extents.center());
        }
        return waitUntil([this] { return find(u"Take it back"_s).has_value(); }, 2s);
    };
    QVERIFY(waitUntil(allows));
    QVERIFY(reads(u"A sample answer"_s));
}

QTEST_MAIN(TestComputer)
#include "test_computer.moc"
