// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
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
};

void TestContextTracker::contexts_data()
{
    QTest::addColumn<Text>("name");
    QTest::addColumn<Text>("bundle");
    QTest::addColumn<Text>("title");
    QTest::addColumn<Text>("page");
    QTest::addColumn<ReadingContext>("expected");
    using enum ReadingContextSource;
    const Text none;

    QTest::newRow("page") << Text(u"Firefox"_s) << Text(u"firefox-esr"_s) << Text(u"T"_s)
                          << Text(u"https://EN.Example.org/%7Ea/?q=1#frag"_s)
                          << ReadingContext{u"web-url:https://EN.Example.org/%7Ea/?q=1#frag"_s,
                                            u"en.example.org"_s, webURL};
    QTest::newRow("page, international host")
        << Text(u"C"_s) << Text(u"chromium"_s) << none << Text(u"https://例子.测试/"_s)
        << ReadingContext{u"web-url:https://例子.测试/"_s, u"xn--fsqu00a.xn--0zwm56d"_s, webURL};
    QTest::newRow("page without host, titled")
        << Text(u"F"_s) << Text(u"firefox"_s) << Text(u"My file"_s) << Text(u"file:///a.html"_s)
        << ReadingContext{u"web-url:file:///a.html"_s, u"My file"_s, webURL};
    QTest::newRow("page without host, empty title")
        << Text(u"F"_s) << Text(u"firefox"_s) << Text(QString()) << Text(u"about:blank"_s)
        << ReadingContext{u"web-url:about:blank"_s, QString(), webURL};
    QTest::newRow("page without host or title")
        << Text(u"F"_s) << Text(u"firefox"_s) << none << Text(u"about:blank"_s)
        << ReadingContext{u"web-url:about:blank"_s, u"F"_s, webURL};
    QTest::newRow("browser with an empty address")
        << Text(u"F"_s) << Text(u"firefox"_s) << Text(u"T"_s) << Text(QString())
        << ReadingContext{u"app-window:firefox:T"_s, u"T"_s, appWindow};
    QTest::newRow("browser with a broken address")
        << Text(u"F"_s) << Text(u"firefox"_s) << Text(u"T"_s) << Text(u"http://[broken"_s)
        << ReadingContext{u"app-window:firefox:T"_s, u"T"_s, appWindow};
    QTest::newRow("window") << Text(u"Viewer"_s) << Text(u"org.viewer"_s) << Text(u"a:b"_s) << none
                            << ReadingContext{u"app-window:org.viewer:a:b"_s, u"a:b"_s, appWindow};
    QTest::newRow("window without bundle")
        << Text(u"XTerm"_s) << none << Text(u"sh"_s) << none
        << ReadingContext{u"app-window:XTerm:sh"_s, u"sh"_s, appWindow};
    QTest::newRow("empty title") << Text(u"Viewer"_s) << Text(u"org.viewer"_s) << Text(QString())
                                 << none
                                 << ReadingContext{u"window-session:org.viewer"_s, u"Viewer"_s,
                                                   windowSession};
    QTest::newRow("bundle only") << none << Text(u"org.viewer"_s) << none << none
                                 << ReadingContext{u"window-session:org.viewer"_s, u"org.viewer"_s,
                                                   windowSession};
    QTest::newRow("nothing known")
        << none << none << none << none
        << ReadingContext{u"window-session:Unknown App"_s, u"Unknown App"_s, windowSession};
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
    const auto context = ContextTracker(workspace, accessibility, ReadingBudget()).currentContext();
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
    QVERIFY(!ContextTracker(workspace, accessibility, ReadingBudget()).currentContext());
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
            ContextTracker(workspace, accessibility, ReadingBudget()).currentContext();
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
    QCOMPARE(ContextTracker(workspace, accessibility, ReadingBudget()).currentContext()->source,
             ReadingContextSource::windowSession);
}

QTEST_GUILESS_MAIN(TestContextTracker)
#include "test_context_tracker.moc"
