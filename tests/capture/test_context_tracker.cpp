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
} // namespace

class TestContextTracker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void contexts_data();
    void contexts();
    void nothingInFront();
    void onlyBrowsersAreAskedForAPage();
    void withoutTrustThereIsNoTitle();
    void settlesLate_data();
    void settlesLate();
    void ownWindow();

private:
    ReadingBudget budget_;
    FakeClock clock_;
};

void TestContextTracker::contexts_data()
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

void TestContextTracker::contexts()
{
    QFETCH(Text, name);
    QFETCH(Text, bundle);
    QFETCH(Text, title);
    QFETCH(Text, page);
    QFETCH(ReadingContext, expected);
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility(calls);
    workspace.frontmost = {5, name, bundle};
    accessibility.title = title;
    accessibility.page = page;
    const auto context = ContextTracker(workspace, accessibility, budget_, clock_).currentContext();
    QVERIFY(context);
    QCOMPARE(context->key, expected.key);
    QCOMPARE(context->displayName, expected.displayName);
    QCOMPARE(context->source, expected.source);
}

void TestContextTracker::nothingInFront()
{
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility(calls);
    QVERIFY(!ContextTracker(workspace, accessibility, budget_, clock_).currentContext());
    QVERIFY(calls.isEmpty());
}

void TestContextTracker::onlyBrowsersAreAskedForAPage()
{
    for (const QString &bundle : {u"org.viewer"_s, u"Firefox"_s, u"firefox-esr.desktop"_s}) {
        FakeCalls calls;
        FakeWorkspace workspace;
        FakeAccessibility accessibility(calls);
        workspace.frontmost = {5, u"n"_s, bundle};
        accessibility.page = u"https://a.test/"_s;
        const auto context =
            ContextTracker(workspace, accessibility, budget_, clock_).currentContext();
        QCOMPARE(context->source, ReadingContextSource::windowSession);
        QVERIFY2(!calls.contains(u"page of 5"_s), qPrintable(bundle));
    }
}

void TestContextTracker::withoutTrustThereIsNoTitle()
{
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility(calls);
    workspace.frontmost = {5, u"Viewer"_s, u"org.viewer"_s};
    accessibility.trusted = false;
    accessibility.title = u"T"_s;
    QCOMPARE(ContextTracker(workspace, accessibility, budget_, clock_).currentContext()->source,
             ReadingContextSource::windowSession);
}

void TestContextTracker::settlesLate_data()
{
    using Change = std::function<void(FakeWorkspace &, FakeAccessibility &)>;
    QTest::addColumn<Text>("bundle");
    QTest::addColumn<Text>("title");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("refined"); // the key, empty when it stays as it was
    const auto row = [](const char *name, const Text &bundle, const Text &title,
                        const Change &change, const QString &refined) {
        QTest::newRow(name) << bundle << title << change << refined;
    };
    const QString address = u"https://a.test/"_s;
    const auto gives = [address](FakeWorkspace &, FakeAccessibility &accessibility) {
        accessibility.page = address;
    };
    row("address", u"chromium"_s, u"T"_s, gives, u"web-url:"_s + address);
    row(
        "address, while our panel has the keyboard", u"chromium"_s, u"T"_s,
        [address](FakeWorkspace &, FakeAccessibility &accessibility) {
            accessibility.page = address;
            accessibility.title.reset();
        },
        u"web-url:"_s + address);
    row("address of another page", u"chromium"_s, u"T"_s,
        [address](FakeWorkspace &, FakeAccessibility &accessibility) {
            accessibility.page = address;
            accessibility.title = u"another"_s;
        },
        {});
    row("another application", u"chromium"_s, u"T"_s,
        [address](FakeWorkspace &workspace, FakeAccessibility &accessibility) {
            accessibility.page = address;
            workspace.frontmost->processIdentifier = 6;
        },
        {});
    row(
        "title", u"org.viewer"_s, QString(),
        [](FakeWorkspace &, FakeAccessibility &accessibility) { accessibility.title = u"T"_s; },
        u"app-window:org.viewer:T"_s);
    row(
        "name of the application", std::nullopt, u"T"_s,
        [](FakeWorkspace &workspace, FakeAccessibility &) {
            workspace.frontmost->bundleIdentifier = u"org.viewer"_s;
            Q_EMIT workspace.didRenameFrontmostApplication();
        },
        u"app-window:org.viewer:T"_s);
    row("no browser", u"org.viewer"_s, u"T"_s, gives, {});
}

void TestContextTracker::settlesLate()
{
    using Change = std::function<void(FakeWorkspace &, FakeAccessibility &)>;
    QFETCH(Text, bundle);
    QFETCH(Text, title);
    QFETCH(Change, change);
    QFETCH(QString, refined);
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility(calls);
    workspace.frontmost = {5, u"Viewer"_s, bundle};
    accessibility.title = title;
    ContextTracker tracker(workspace, accessibility, budget_, clock_);
    QVERIFY(tracker.currentContext());
    QString key;
    tracker.refine(this, [&key](const ReadingContext &context) { key = context.key; });
    clock_.advance(std::chrono::milliseconds(100));
    QVERIFY(key.isEmpty());
    change(workspace, accessibility);
    QCoreApplication::processEvents();
    clock_.advance(std::chrono::minutes(1));
    QCOMPARE(key, refined);
    QVERIFY(calls.count(u"page of 5"_s) <= 5);
}

void TestContextTracker::ownWindow()
{
    FakeCalls calls;
    FakeWorkspace workspace;
    FakeAccessibility accessibility(calls);
    workspace.frontmost = {5, u"Firefox"_s, u"firefox"_s};
    accessibility.page = u"https://a.test/"_s;
    workspace.ownWindowActive = true;
    ContextTracker tracker(workspace, accessibility, budget_, clock_);
    const ReadingContext own{u"window-session:app.vellumo.Vellumo"_s, u"vellumo"_s,
                             ReadingContextSource::windowSession};
    QCOMPARE(tracker.currentContext(), own);
    const ReadingContext page{u"web-url:https://b.test/"_s, u"b.test"_s,
                              ReadingContextSource::webURL};
    tracker.openNoteContext = [&page] { return std::optional(page); };
    QCOMPARE(tracker.currentContext(), page);
}

QTEST_GUILESS_MAIN(TestContextTracker)
#include "test_context_tracker.moc"
