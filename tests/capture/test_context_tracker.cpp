// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {
using Text = std::optional<QString>;

struct Desk {
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility{calls};
    ReadingBudget budget;
    FakeClock clock;
    ContextTracker tracker{workspace, accessibility, budget, clock};
};
} // namespace

class TestContextTracker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void contexts_data()
    {
        QTest::addColumn<Text>("name");
        QTest::addColumn<Text>("bundle");
        QTest::addColumn<Text>("title");
        QTest::addColumn<Text>("page");
        QTest::addColumn<ReadingContext>("expected");
        using enum ReadingContextSource;
        const auto row = [](const char *name, const Text &application, const Text &bundle,
                            const Text &title, const Text &page, const ReadingContext &expected) {
            QTest::newRow(name) << application << bundle << title << page << expected;
        };
        const Text none;
        const auto f = u"F"_s;
        const auto firefox = u"firefox"_s;
        const auto viewer = u"Viewer"_s;
        const auto bundle = u"org.viewer"_s;
        const auto t = u"T"_s;
        const auto page = u"https://EN.Example.org/%7Ea/?q=1#frag"_s;
        row("page", f, firefox, t, page, {u"web-url:"_s + page, u"en.example.org"_s, webURL});
        row("page, international host", f, firefox, none, u"https://例子.测试/"_s,
            {u"web-url:https://例子.测试/"_s, u"xn--fsqu00a.xn--0zwm56d"_s, webURL});
        row("page without host, titled", f, firefox, t, u"file:///a.html"_s,
            {u"web-url:file:///a.html"_s, t, webURL});
        row("page without host, empty title", f, firefox, QString(), u"about:blank"_s,
            {u"web-url:about:blank"_s, QString(), webURL});
        row("page without host or title", f, firefox, none, u"about:blank"_s,
            {u"web-url:about:blank"_s, f, webURL});
        row("empty address", f, firefox, t, QString(), {u"app-window:firefox:T"_s, t, appWindow});
        row("broken address", f, firefox, t, u"http://[broken"_s,
            {u"app-window:firefox:T"_s, t, appWindow});
        row("window", viewer, bundle, u"a:b"_s, none,
            {u"app-window:org.viewer:a:b"_s, u"a:b"_s, appWindow});
        row("window without bundle", u"XTerm"_s, none, u"sh"_s, none,
            {u"app-window:XTerm:sh"_s, u"sh"_s, appWindow});
        row("empty title", viewer, bundle, QString(), none,
            {u"window-session:org.viewer"_s, viewer, windowSession});
        row("bundle only", none, bundle, none, none,
            {u"window-session:org.viewer"_s, bundle, windowSession});
        row("nothing known", none, none, none, none,
            {u"window-session:Unknown App"_s, u"Unknown App"_s, windowSession});
    }

    void contexts()
    {
        QFETCH(Text, name);
        QFETCH(Text, bundle);
        QFETCH(Text, title);
        QFETCH(Text, page);
        QFETCH(ReadingContext, expected);
        Desk desk;
        desk.workspace.frontmost = {5, name, bundle};
        desk.accessibility.title = title;
        desk.accessibility.page = page;
        const auto context = desk.tracker.currentContext();
        QVERIFY(context);
        QCOMPARE(context->key, expected.key);
        QCOMPARE(context->displayName, expected.displayName);
        QCOMPARE(context->source, expected.source);
    }

    void nothingInFront()
    {
        Desk desk;
        QVERIFY(!desk.tracker.currentContext());
        QVERIFY(desk.calls.isEmpty());
    }

    void onlyBrowsersAreAskedForAPage()
    {
        for (const QString &bundle : {u"org.viewer"_s, u"Firefox"_s, u"firefox-esr.desktop"_s}) {
            Desk desk;
            desk.workspace.frontmost = {5, u"n"_s, bundle};
            desk.accessibility.page = u"https://a.test/"_s;
            const auto context = desk.tracker.currentContext();
            QCOMPARE(context->source, ReadingContextSource::windowSession);
            QVERIFY2(!desk.calls.contains(u"page of 5"_s), qPrintable(bundle));
        }
    }

    void withoutTrustThereIsNoTitle()
    {
        Desk desk;
        desk.workspace.frontmost = {5, u"Viewer"_s, u"org.viewer"_s};
        desk.accessibility.trusted = false;
        desk.accessibility.title = u"T"_s;
        QCOMPARE(desk.tracker.currentContext()->source, ReadingContextSource::windowSession);
    }

    void settlesLate_data()
    {
        using Change = std::function<void(Desk &)>;
        QTest::addColumn<Text>("bundle");
        QTest::addColumn<Text>("title");
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("refined"); // the key, empty when it stays as it was
        const auto row = [](const char *name, const Text &bundle, const Text &title,
                            const Change &change, const QString &refined) {
            QTest::newRow(name) << bundle << title << change << refined;
        };
        const QString address = u"https://a.test/"_s;
        const auto gives = [address](Desk &desk) { desk.accessibility.page = address; };
        row("address", u"chromium"_s, u"T"_s, gives, u"web-url:"_s + address);
        row(
            "address, while our panel has the keyboard", u"chromium"_s, u"T"_s,
            [address](Desk &desk) {
                desk.accessibility.page = address;
                desk.accessibility.title.reset();
            },
            u"web-url:"_s + address);
        row("address of another page", u"chromium"_s, u"T"_s,
            [address](Desk &desk) {
                desk.accessibility.page = address;
                desk.accessibility.title = u"another"_s;
            },
            {});
        row("another application", u"chromium"_s, u"T"_s,
            [address](Desk &desk) {
                desk.accessibility.page = address;
                desk.workspace.frontmost->processIdentifier = 6;
            },
            {});
        row(
            "title", u"org.viewer"_s, QString(),
            [](Desk &desk) { desk.accessibility.title = u"T"_s; }, u"app-window:org.viewer:T"_s);
        row(
            "name of the application", std::nullopt, u"T"_s,
            [](Desk &desk) {
                desk.workspace.frontmost->bundleIdentifier = u"org.viewer"_s;
                Q_EMIT desk.workspace.didRenameFrontmostApplication();
            },
            u"app-window:org.viewer:T"_s);
        row("no browser", u"org.viewer"_s, u"T"_s, gives, {});
    }

    void isReportedLate()
    {
        Desk desk;
        desk.workspace.frontmost.emplace(); // no window is known to be in front
        QVERIFY(desk.tracker.currentContext());
        QStringList keys;
        desk.tracker.refine(this, [&](const ReadingContext &context) { keys << context.key; });
        desk.workspace.frontmost = {5, u"Viewer"_s, u"org.viewer"_s};
        desk.accessibility.title = u"T"_s;
        desk.clock.advance(std::chrono::milliseconds(100));
        QVERIFY(keys.isEmpty()); // it may have come to the front since
        Q_EMIT desk.workspace.didRenameFrontmostApplication();
        QCoreApplication::processEvents();
        desk.clock.advance(std::chrono::minutes(1));
        QCOMPARE(keys, QStringList{u"app-window:org.viewer:T"_s});
    }

    void settlesLate()
    {
        using Change = std::function<void(Desk &)>;
        QFETCH(Text, bundle);
        QFETCH(Text, title);
        QFETCH(Change, change);
        QFETCH(QString, refined);
        Desk desk;
        desk.workspace.frontmost = {5, u"Viewer"_s, bundle};
        desk.accessibility.title = title;
        QVERIFY(desk.tracker.currentContext());
        QString key;
        desk.tracker.refine(this, [&key](const ReadingContext &context) { key = context.key; });
        desk.clock.advance(std::chrono::milliseconds(100));
        QVERIFY(key.isEmpty());
        change(desk);
        QCoreApplication::processEvents();
        desk.clock.advance(std::chrono::minutes(1));
        QCOMPARE(key, refined);
        QVERIFY(desk.calls.count(u"page of 5"_s) <= 5);
    }

    void ownWindow()
    {
        Desk desk;
        desk.workspace.frontmost = {5, u"Firefox"_s, u"firefox"_s};
        desk.accessibility.page = u"https://a.test/"_s;
        desk.workspace.ownWindowActive = true;
        const ReadingContext own{u"window-session:app.vellumo.Vellumo"_s, u"vellumo"_s,
                                 ReadingContextSource::windowSession};
        QCOMPARE(desk.tracker.currentContext(), own);
        const ReadingContext page{u"web-url:https://b.test/"_s, u"b.test"_s,
                                  ReadingContextSource::webURL};
        desk.tracker.openNoteContext = [&page] { return std::optional(page); };
        QCOMPARE(desk.tracker.currentContext(), page);
    }
};

QTEST_GUILESS_MAIN(TestContextTracker)
#include "test_context_tracker.moc"
