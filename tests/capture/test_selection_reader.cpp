// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/AccessibilitySelectionReader.h"
#include "capture/ReadingBudget.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

namespace {

constexpr qint64 applicationPid = 4711;

const SelectedText nothing{SelectedText::Kind::Nothing, {}};

SelectedText textual(const QString &text)
{
    return {SelectedText::Kind::Text, text};
}

const QList<PasteboardItem> usersClipboard = {
    {{u"text/html"_s, "<b>kept</b>"}, {u"UTF8_STRING"_s, "kept"}}};

const SelectedText unfinished{SelectedText::Kind::Unfinished, {}};

/// What the application in front would answer on each road, and what comes of it.
struct Roads {
    std::optional<ElementKind> focused = ElementKind::Ordinary;
    bool isEditable = false; ///< the focused element
    bool isEditor = false; ///< the application
    QList<SelectedText> selections = {{}}; ///< one per question; the last stays
    QString range = {};
    std::optional<QString> published = {};
    std::optional<Publication> publication = Publication{applicationPid, 1s, false, {}};
    QList<std::chrono::milliseconds> changes = {}; ///< of the selection, the latest first
    std::optional<QString> copied = {};
    std::optional<QString> expected = {};
    QString lastCall = {}; ///< that was made to the desktop
};

} // namespace

class TestSelectionReader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void triesTheRoadsInOrder_data();
    void triesTheRoadsInOrder();
    void copyRestoresTheClipboard_data();
    void copyRestoresTheClipboard();
    void clipboardThatCannotBeKeptIsNotTouched();
    void hangingRoadsShareOneBudget();
    void withoutTrustNothingIsTried();
    void ownWindowAnswersForItself();

private:
    struct Fixture {
        FakeCalls calls;
        FakeWorkspace workspace;
        FakeAccessibility accessibility{calls};
        FakePasteboard pasteboard{calls};
        FakePrimarySelection primary{calls};
        FakeKeyPosting keys{calls};
        FakeEventMonitors events;
        ReadingBudget budget;
        AccessibilitySelectionReader reader{
            {workspace, accessibility, pasteboard, &primary, keys, events}, budget};
    };
    std::unique_ptr<Fixture> with_;
};

void TestSelectionReader::init()
{
    with_ = std::make_unique<Fixture>();
    with_->workspace.frontmost = {applicationPid, u"Editor"_s, u"org.editor"_s};
    with_->pasteboard.contents = usersClipboard;
}

void TestSelectionReader::triesTheRoadsInOrder_data()
{
    QTest::addColumn<Roads>("roads");
    const auto row = [](const char *name, const Roads &roads) { QTest::newRow(name) << roads; };
    const auto text = u"text"_s;
    row("accessibility alone",
        {.selections = {textual(u" 选中的 text "_s)},
         .published = text,
         .expected = u" 选中的 text "_s,
         .lastCall = u"selected text"_s});
    row("fillers are removed",
        {.selections = {textual(u"\uFFFC😀\uFEFF text\uFFFC"_s)},
         .expected = u"😀 text"_s,
         .lastCall = u"selected text"_s});
    row("the range", {.range = text, .expected = text, .lastCall = u"string for range"_s});
    row("the published one", {.published = text, .expected = text, .lastCall = u"primary"_s});
    const auto publication = [](std::chrono::milliseconds age,
                                std::optional<std::chrono::milliseconds> sinceRead = {}) {
        return Publication{applicationPid, age, false, sinceRead};
    };
    const auto copies = u"wait for copy"_s;
    const auto takesPublished = u"primary"_s;
    row("another's published one",
        {.published = text, .publication = Publication{1, 1s, false, {}}, .lastCall = copies});
    row("no published one", {.published = text, .publication = {}, .lastCall = copies});
    row("published, and over since then",
        {.published = text,
         .publication = Publication{applicationPid, 1s, true, {}},
         .lastCall = copies});
    row("published, and read a moment ago",
        {.published = text,
         .publication = publication(1h, 29s),
         .expected = text,
         .lastCall = takesPublished});
    row("published, and read long ago",
        {.published = text, .publication = publication(1h, 31s), .lastCall = copies});
    row("published with the last change of the selection, which is announced later",
        {.published = text,
         .publication = publication(5s, 1h),
         .changes = {4200ms},
         .expected = text,
         .lastCall = takesPublished});
    row("published before the last change of the selection",
        {.published = text, .publication = publication(60s), .changes = {4s}, .lastCall = copies});
    row("not read to its end, and published",
        {.selections = {unfinished},
         .published = text,
         .publication = publication(5s, 1h),
         .changes = {5s},
         .expected = text,
         .lastCall = takesPublished});
    row("not read to its end, and something older published",
        {.selections = {unfinished},
         .published = u"older"_s,
         .publication = publication(60s),
         .changes = {5s},
         .copied = text,
         .expected = text,
         .lastCall = u"write"_s});
    row("dropped by the tap itself",
        {.selections = {nothing},
         .published = text,
         .publication = publication(5s),
         .changes = {200ms, 5s},
         .expected = text,
         .lastCall = takesPublished});
    row("dropped by the tap itself, after another change",
        {.selections = {nothing},
         .published = text,
         .publication = publication(60s),
         .changes = {200ms, 5s},
         .lastCall = copies});
    row("an editor with nothing selected copies nothing",
        {.isEditable = true,
         .selections = {nothing},
         .copied = u"the line of the caret\n"_s,
         .lastCall = u"selected range"_s});
    row("the line of the caret, from an application that publishes",
        {.publication = Publication{applicationPid, 1s, true, {}},
         .copied = u"the line of the caret\n"_s,
         .lastCall = u"write"_s});
    row("the line of the caret, from an editor",
        {.isEditor = true,
         .publication = {},
         .copied = u"the line of the caret\n"_s,
         .lastCall = u"write"_s});
    row("a line, from an application that does not publish",
        {.publication = {},
         .copied = u"a line\n"_s,
         .expected = u"a line\n"_s,
         .lastCall = u"write"_s});
    row("published before, and nothing selected now",
        {.selections = {nothing}, .published = text, .lastCall = u"wait for copy"_s});
    row("nothing selected, and silent when asked again",
        {.selections = {nothing, SelectedText()},
         .published = text,
         .lastCall = u"wait for copy"_s});
    row("selected once the menu has given the focus back",
        {.selections = {nothing, textual(text)}, .expected = text, .lastCall = u"selected text"_s});
    row("blank on both roads before the copy",
        {.selections = {textual(u" \n "_s)},
         .published = u"\uFFFC \n"_s,
         .copied = text,
         .expected = text,
         .lastCall = u"write"_s});
    row("nothing copied leaves the clipboard alone",
        {.focused = {}, .lastCall = u"wait for copy"_s});
    row("a terminal receives no keys",
        {.focused = ElementKind::Terminal, .copied = text, .lastCall = u"primary"_s});
    row("a terminal's published one",
        {.focused = ElementKind::Terminal,
         .published = text,
         .expected = text,
         .lastCall = u"primary"_s});
    row("a password is never read",
        {.focused = ElementKind::Password,
         .selections = {textual(text)},
         .published = text,
         .copied = text,
         .lastCall = u"focused element"_s});
}

void TestSelectionReader::triesTheRoadsInOrder()
{
    QFETCH(Roads, roads);
    with_->accessibility.focusedKind = roads.focused;
    with_->workspace.frontmost->isTextEditor = roads.isEditor;
    with_->accessibility.isEditable = roads.isEditable;
    with_->accessibility.selections = roads.selections;
    with_->accessibility.selectionChanges = roads.changes;
    if (!roads.range.isEmpty()) {
        with_->accessibility.range = {3, 5};
        with_->accessibility.rangeText = roads.range;
    }
    with_->primary.published = roads.publication;
    with_->primary.text = roads.published;
    with_->pasteboard.copied = roads.copied;
    QCOMPARE(with_->reader.currentSelectedText(), roads.expected);
    QCOMPARE(with_->calls.last(), roads.lastCall);
    QCOMPARE(with_->pasteboard.contents, usersClipboard);
    const bool mayBeInMenu = roads.selections.first().kind == SelectedText::Kind::Nothing;
    QCOMPARE(with_->events.waitsForRelease, mayBeInMenu ? 1 : 0);
}

void TestSelectionReader::copyRestoresTheClipboard_data()
{
    QTest::addColumn<QList<PasteboardItem>>("before");
    QTest::newRow("several types") << usersClipboard;
    QTest::newRow("empty") << QList<PasteboardItem>();
}

void TestSelectionReader::copyRestoresTheClipboard()
{
    QFETCH(QList<PasteboardItem>, before);
    with_->accessibility.focusedKind.reset();
    with_->pasteboard.contents = before;
    with_->pasteboard.copied = u"copied"_s;
    QCOMPARE(with_->reader.currentSelectedText(), u"copied"_s);
    QCOMPARE(with_->pasteboard.contents, before);
    FakeCalls expected = {u"request accessibility of 4711"_s,
                          u"focused element"_s,
                          u"snapshot"_s,
                          u"copy keys"_s,
                          u"wait for copy"_s,
                          u"read copy"_s,
                          u"clear"_s};
    if (!before.isEmpty()) {
        expected.append(u"write"_s);
    }
    QCOMPARE(with_->calls, expected);
}

void TestSelectionReader::clipboardThatCannotBeKeptIsNotTouched()
{
    with_->accessibility.focusedKind.reset();
    with_->pasteboard.contents.reset();
    with_->pasteboard.copied = u"copied"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QVERIFY(!with_->calls.contains(u"copy keys"_s));
}

void TestSelectionReader::hangingRoadsShareOneBudget()
{
    with_->accessibility.hangs = true;
    with_->primary.hangs = true;
    with_->primary.published = Publication{applicationPid, {}, false, {}};
    with_->pasteboard.isSlow = true;
    with_->pasteboard.copied = u"copied"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QCOMPARE(with_->calls.last(), u"snapshot"_s); // a copy would come when nobody waits for it
    QCOMPARE_LE(with_->budget.contextDeadline().remainingTime(),
                ReadingBudget::contextReserve.count());
}

void TestSelectionReader::withoutTrustNothingIsTried()
{
    with_->accessibility.trusted = false;
    with_->accessibility.selections = {textual(u"text"_s)};
    with_->primary.published = Publication{applicationPid, {}, false, {}};
    with_->primary.text = u"text"_s;
    with_->pasteboard.copied = u"text"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QVERIFY(with_->calls.isEmpty());
}

void TestSelectionReader::ownWindowAnswersForItself()
{
    with_->workspace.ownWindowActive = true;
    with_->workspace.ownSelection = u"own"_s;
    QCOMPARE(with_->reader.currentSelectedText(), u"own"_s);
    with_->workspace.ownSelection.clear();
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QVERIFY(with_->calls.isEmpty());
}

QTEST_GUILESS_MAIN(TestSelectionReader)
#include "test_selection_reader.moc"
