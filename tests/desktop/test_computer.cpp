// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ModelReply.h"
#include "desktop/ProgramTest.h"
#include "driver/AccessibleTree.h"
#include "driver/Keyring.h"

using namespace vellumo::test;

static const QString key = u"sk-secret-1"_s;

/// The page of this computer in the built program: a service and the desktop's real keyring, and
/// the permission.
class TestComputer : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void takesAServiceAndKeepsItsKey()
    {
        HttpServer server;
        server.answer("POST", target, modelSays(explanationOf(u"It is the moon."_s)));
        QVERIFY(vellumo_->start() && editor_->open());
        QVERIFY(reads(u"Sample answer"_s));
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
        QVERIFY(shows(u"Show the key"_s));
        desktop_.chord(Key::ControlLeft, Key::A);
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForText(u"Select text first."_s)); // a secret is not read
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
        QByteArray everything = vellumo_->allThatIsKept();
        QCOMPARE(vellumo_->process().end(), 0);

        server.forgetRequests();
        QVERIFY(vellumo_->start());
        QVERIFY(reads(u"It is the moon."_s));
        for (const HttpReceived &request : server.requests())
            QCOMPARE(request.header("Authorization"), QByteArrayList{"Bearer sk-secret-1"});
        QVERIFY(vellumo_->dismissPanel());

        everything += vellumo_->allThatIsKept();
        QVERIFY(everything.contains("model-1") && !everything.contains(key.toUtf8()));

        // a key that is not accepted: the panel leads back to this page
        server.answer("POST", target, {.status = "401 No"});
        QVERIFY(reads(u"Check the service"_s));
        QVERIFY(goesToService(u"Check the service"_s));
        QVERIFY(vellumo_->waitForText(u"The key is missing or was rejected (401)."_s));
    }

    void takesThePermissionBackWithoutAWarning()
    {
        QVERIFY(vellumo_->start() && editor_->open());
        QVERIFY(reads(u"Sample answer"_s));
        QVERIFY(goesToService(u"Set up a service"_s));
        desktop_.tap(Key::PageDown);
        QVERIFY(vellumo_->click(u"Withdraw permission"_s));
        QVERIFY(shows(u"Allow"_s));
        QVERIFY(reads(u"vellumo needs Accessibility permission"_s));
        const auto warns = [this] {
            return vellumo_->panelText().contains("vellumo lost Accessibility permission"_L1);
        };
        QVERIFY(vellumo_->dismissPanel());
        QVERIFY(vellumo_->click(
            u"Allow"_s)); // on the page, whose window looks at the permission as it activates
        // the question is shown now; it would wait behind an alert. Its button has the same
        // name
        QVERIFY(shows(u"Not now"_s));
        QVERIFY(!warns());
        const auto allows = [this] {
            const auto refusal = vellumo_->find(u"Not now"_s);
            const auto items = accessibleItems(vellumo_->process().processIdentifier());
            for (const AccessibleItem &item : items) {
                if (refusal && item.name == "Allow"_L1
                    && desktop_.windowAt(item.extents.center())
                        == desktop_.windowAt(refusal->center()))
                    desktop_.click(item.extents.center());
            }
            return waitUntil(
                [this] { return vellumo_->find(u"Withdraw permission"_s).has_value(); }, 2s);
        };
        QVERIFY(waitUntil(allows));
        QVERIFY(reads(u"Sample answer"_s));
    }

private:
    [[nodiscard]] bool shows(const QString &name) const
    {
        return waitUntil([&] { return vellumo_->find(name).has_value(); });
    }
    /// Clicks this button of the panel until it is gone; the panel may still move.
    bool goesToService(const QString &button)
    {
        return waitUntil([&] { return vellumo_->click(button) && vellumo_->waitForNoPanel(1s); })
            && shows(u"Base URL"_s);
    }

    /// Double-taps with the sentence selected until the panel shows this text.
    bool reads(const QString &text)
    {
        return waitUntil([&] {
            return vellumo_->dismissPanel() && desktop_.activate(editor_->window())
                && editor_->selectAll() && (desktop_.doubleTap(), vellumo_->waitForPanel(3s))
                && waitUntil([&] { return vellumo_->panelText().contains(text); }, 3s);
        });
    }
};

QTEST_MAIN(TestComputer)
#include "test_computer.moc"
