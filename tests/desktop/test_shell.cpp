// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Desktop.h"
#include "support/Program.h"
#include "support/TrayHost.h"
#include "support/Waiting.h"
#include <QTest>
#include <csignal>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The built program as the desktop's panels and other programs meet it.
class TestShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void iconIsThereWheneverAHostIs();
    void iconHasAMenu();
    void ordinaryWindowsTakeTheKeysOfTheMenu();

private:
    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
};

void TestShell::init()
{
    vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM),
                                         QString::fromLatin1(QTest::currentTestFunction()));
}

void TestShell::cleanup()
{
    if (QTest::currentTestFailed() && vellumo_->hasStarted())
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput();
    vellumo_.reset();
}

void TestShell::iconIsThereWheneverAHostIs()
{
    auto host = std::make_unique<TrayHost>();
    QVERIFY(vellumo_->start());
    QVERIFY(host->waitForItem());
    for (int restart = 0; restart < 2; ++restart) {
        host.reset();
        host = std::make_unique<TrayHost>();
        QVERIFY(host->waitForItem());
    }
    QCOMPARE(host->items().size(), 1);
    QCOMPARE(host->property(u"Title"_s).toString(), u"vellumo"_s);
    QVERIFY(vellumo_->process().end() == 0);
}

void TestShell::iconHasAMenu()
{
    QVERIFY(vellumo_->start());
    TrayHost host; // later than the program
    QVERIFY(host.waitForItem());
    const QList<TrayHost::MenuItem> menu = host.menu();
    QStringList labels;
    for (const auto &item : menu)
        labels.append(item.label);
    QCOMPARE(
        labels,
        (QStringList{u"vellumo is running"_s, {}, u"Check for Updates…"_s, {}, u"Quit vellumo"_s}));
    QVERIFY(!menu[0].isEnabled);
    QCOMPARE(menu[4].shortcut, (QStringList{u"Control"_s, u"Q"_s}));

    host.choose(menu[2].id);
    const auto alert = [this] { return desktop_.windows(u"vellumo"_s, u"vellumo"_s); };
    QVERIFY(waitUntil([&] { return alert().size() == 1; }));
    desktop_.tap(Key::Escape);

    host.choose(menu[4].id);
    QVERIFY(vellumo_->process().waitForEnd(5s));
    QCOMPARE(vellumo_->process().exitCode(), 0);
}

void TestShell::ordinaryWindowsTakeTheKeysOfTheMenu()
{
    vellumo_->setSetting(u"accessibilityConsent"_s, u"false"_s);
    QVERIFY(vellumo_->start());
    const auto question = desktop_.waitForWindow(u"vellumo"_s, {}, 10s);
    QVERIFY(question);
    QVERIFY(desktop_.activate(*question));
    desktop_.chord(Key::ControlLeft, Key::H);
    QVERIFY(waitUntil([&] { return !desktop_.isVisible(*question); }));
    QVERIFY(desktop_.activate(*question));
    // keys may go astray until a window that comes back has the keyboard
    const auto quits = [this] {
        desktop_.chord(Key::ControlLeft, Key::Q);
        return vellumo_->process().waitForEnd(500ms);
    };
    QVERIFY(waitUntil(quits, 10s));
    QCOMPARE(vellumo_->process().exitCode(), 0);
}

QTEST_MAIN(TestShell)
#include "test_shell.moc"
