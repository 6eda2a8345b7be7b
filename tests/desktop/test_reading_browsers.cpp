// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadApplications.h"
#include "desktop/ReadingDesk.h"
#include "driver/Waiting.h"
#include <QProcess>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The window's title shows how much is selected. The browser gets it from the page after the
/// selection itself.
constexpr QStringView body = uR"html(
<script>
document.addEventListener('selectionchange', () => {
    const tell = () => document.title = `first ${getSelection().toString().length}`;
    requestAnimationFrame(() => requestAnimationFrame(tell));
});
</script>
<h1 id=head>Tides</h1>
<p id=english>The tide turns twice a day, and nobody asks it why.</p>
<p id=chinese>潮水每天涨落两次，没有人问它为什么。</p>
<p id=emoji>Moon 🌕, wave 🌊 and family 👩‍👩‍👧 here</p>
<p id=link>Read the <a href="#tables">tide tables</a> before you sail.</p>
<p><a id=tab target=_blank href="/second?x=1#y">Open in a tab</a></p>
<p><a id=window href="/third">Open in a window</a></p>
<p id=empty>&nbsp;</p>
)html";

/// Folds line breaks: their number between blocks depends on how the text was read.
QStringList paragraphs(const QString &text)
{
    return text.split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

class TestReadingBrowsers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatIsSelected_data() { browsers(); }

    void readsWhatIsSelected()
    {
        QFETCH(QString, browser);
        ReadingDesk desk;
        const auto application = open(desk);
        QVERIFY(application);
        if (!application->isInstalled())
            QSKIP("not installed");
        const WindowId window = desk.desktop.activeWindow();

        const struct {
            QString from;
            QString to;
            QStringList expected;
        } rows[] = {
            {u"english"_s,
             u"english"_s,
             {u"The tide turns twice a day, and nobody asks it why."_s}},
            {u"chinese"_s, u"chinese"_s, {u"潮水每天涨落两次，没有人问它为什么。"_s}},
            {u"emoji"_s,
             u"emoji"_s,
             {u"Moon 🌕, wave 🌊 and family 👩‍👩‍👧 here"_s}},
            {u"link"_s, u"link"_s, {u"Read the tide tables before you sail."_s}},
            {u"head"_s,
             u"link"_s,
             {u"Tides"_s, u"The tide turns twice a day, and nobody asks it why."_s,
              u"潮水每天涨落两次，没有人问它为什么。"_s,
              u"Moon 🌕, wave 🌊 and family 👩‍👩‍👧 here"_s,
              u"Read the tide tables before you sail."_s}},
        };
        for (const auto &row : rows) {
            QVERIFY2(select(desk, row.from, row.to), qPrintable(row.from));
            const QString selection = desk.pages.selection(u"first"_s);
            std::optional<QString> read; // null only while the machine is too busy
            QVERIFY(waitUntil([&] { return (read = desk.read()).has_value(); }));
            QCOMPARE(paragraphs(*read), row.expected);
            // the user sees no difference
            QCOMPARE(desk.pages.selection(u"first"_s), selection);
            QVERIFY(desk.pages.hasFocus(u"first"_s));
            QCOMPARE(desk.desktop.activeWindow(), window);
            // browsers go on publishing a text that is not selected any more
            QVERIFY(deselect(desk));
            if (browser == "chromium"_L1)
                continue; // the browser does not report that nothing is selected
            QVERIFY(waitUntil([&] { return desk.answers(); }));
            QCOMPARE(desk.read().value_or(u"nothing"_s), u"nothing"_s);
        }
    }

    void namesThePageInFront_data() { browsers(); }

    void namesThePageInFront()
    {
        QFETCH(QString, browser);
        ReadingDesk desk;
        const auto application = open(desk);
        QVERIFY(application);
        if (!application->isInstalled())
            QSKIP("not installed");

        const auto keyBecomes = [&desk](const QString &expected) {
            const bool reached = waitUntil([&] {
                const auto context = desk.context();
                return context && context->key == expected;
            });
            if (!reached) {
                const auto context = desk.context();
                qWarning() << "the key is" << (context ? context->key : QString()) << "instead of"
                           << expected;
            }
            return reached;
        };
        if (browser == "chromium"_L1) { // gives no address: the window counts as the page
            const auto context = desk.context();
            QVERIFY(context);
            QCOMPARE(context->source, ReadingContextSource::appWindow);
            QCOMPARE(context->displayName, desk.desktop.title(desk.desktop.activeWindow()));
            return;
        }

        const WindowId firstWindow = desk.desktop.activeWindow();
        QVERIFY(keyBecomes(u"web-url:"_s + desk.pages.address(u"first?q=a%20b#Top"_s)));
        QCOMPARE(desk.context()->displayName, u"127.0.0.1"_s);
        QCOMPARE(desk.context()->source, ReadingContextSource::webURL);

        desk.desktop.click(desk.pages.startOf(u"first"_s, u"tab"_s).value() + QPoint(10, 0));
        QVERIFY(keyBecomes(u"web-url:"_s + desk.pages.address(u"second?x=1#y"_s)));

        QVERIFY(locate(desk, u"second"_s));
        desk.desktop.press(Key::ShiftLeft);
        desk.desktop.click(desk.pages.startOf(u"second"_s, u"window"_s).value() + QPoint(10, 0));
        desk.desktop.release(Key::ShiftLeft);
        QVERIFY(keyBecomes(u"web-url:"_s + desk.pages.address(u"third"_s)));

        QVERIFY(desk.desktop.activate(firstWindow));
        QVERIFY(keyBecomes(u"web-url:"_s + desk.pages.address(u"second?x=1#y"_s)));
        desk.desktop.chord(Key::ControlLeft, Key::PageUp); // back to the first tab
        QVERIFY(keyBecomes(u"web-url:"_s + desk.pages.address(u"first?q=a%20b#Top"_s)));
    }

    void namesAPageOfAnotherProcess()
    {
        ReadingDesk desk;
        desk.pages.setBody(u"first"_s, body.toString());
        const QString address = desk.pages.address(u"first?q=a%20b#Top"_s);
        Application browser(epiphany(address, u"first"_s));
        if (!browser.isInstalled())
            QSKIP("not installed");
        // It would ask whether it is to be the default browser.
        const QString settings = u"GSETTINGS_BACKEND=keyfile gsettings set org.gnome.Epiphany "
                                 "ask-for-default false"_s;
        QCOMPARE(QProcess::execute(u"sh"_s, {u"-c"_s, settings}), 0);
        browser.setEnvironment(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
        browser.setEnvironment(u"WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS"_s, u"1"_s); // for root
        QVERIFY(desk.open(browser));
        QVERIFY(waitUntil([&] {
            const auto context = desk.context();
            return context && context->key == u"web-url:"_s + address;
        }));
    }

private:
    static void browsers()
    {
        QTest::addColumn<QString>("browser");
        QTest::newRow("Firefox") << u"firefox"_s;
        QTest::newRow("Chromium with its tree") << u"chromium-tree"_s;
        QTest::newRow("Chromium without its tree") << u"chromium"_s;
    }

    /// Starts the browser of this row on the page "first", in front and ready for input. Returns
    /// null on failure.
    static std::unique_ptr<Application> open(ReadingDesk &desk)
    {
        QFETCH(QString, browser);
        for (const QString &path : {u"first"_s, u"second"_s, u"third"_s})
            desk.pages.setBody(path, body.toString());
        const QString address = desk.pages.address(u"first?q=a%20b#Top"_s);
        const QString profile = desk.folder(browser);
        auto application = std::make_unique<Application>(
            browser == "firefox"_L1
                ? firefox(address, u"first"_s, profile)
                : chromium(address, u"first"_s, profile, browser == "chromium-tree"_L1));
        if (!application->isInstalled())
            return application;
        const bool ready = desk.open(*application) && locate(desk, u"first"_s);
        return ready ? std::move(application) : nullptr;
    }

    /// Waits until the page knows its place on the screen.
    static bool locate(ReadingDesk &desk, const QString &page)
    {
        int step = 0;
        return waitUntil(
            [&] {
                const QRect place = desk.desktop.geometry(desk.desktop.activeWindow());
                desk.desktop.moveTo(place.center() + QPoint(++step % 9, 0));
                return desk.pages.startOf(page, u"english"_s).has_value();
            },
            20s);
    }

    static bool select(ReadingDesk &desk, const QString &from, const QString &to)
    {
        const auto start = desk.pages.startOf(u"first"_s, from);
        const auto end = desk.pages.endOf(u"first"_s, to);
        if (!start || !end)
            return false;
        desk.desktop.drag(*start, *end);
        return waitUntil([&] {
            const QString selected = desk.pages.selection(u"first"_s);
            return !selected.isEmpty() && isSettled(desk) && desk.primary() == selected;
        });
    }

    static bool deselect(ReadingDesk &desk)
    {
        desk.desktop.click(desk.pages.startOf(u"first"_s, u"empty"_s).value());
        return waitUntil(
            [&] { return desk.pages.selection(u"first"_s).isEmpty() && isSettled(desk); });
    }

    /// Waits until the page and its browser agree on how much is selected.
    static bool isSettled(const ReadingDesk &desk)
    {
        const qsizetype length = desk.pages.selection(u"first"_s).size();
        return desk.desktop.title(desk.desktop.activeWindow())
            .startsWith(u"first %1 "_s.arg(length));
    }
};

QTEST_MAIN(TestReadingBrowsers)
#include "test_reading_browsers.moc"
