// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/AccessibilitySelectionReader.h"
#include "capture/ReadingBudget.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"

#include <QTest>

using namespace Qt::StringLiterals;
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

} // namespace

class TestSelectionReader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void accessibilityAnswersAlone();
    void rangeRoadFollowsAnEmptySelection();
    void blankSelectionGoesOnToTheClipboard();
    void publishedSelectionNeedsTheRightOwner_data();
    void publishedSelectionNeedsTheRightOwner();
    void copyRestoresTheClipboard_data();
    void copyRestoresTheClipboard();
    void noCopyLeavesTheClipboardAlone();
    void clipboardThatCannotBeKeptIsNotTouched();
    void hangingRoadsShareOneBudget();
    void terminalReceivesNoKeys();
    void passwordIsNeverRead();
    void menuFocusIsAskedAgainAfterTheRelease();
    void nothingSelectedOutlivesASilentSecondAnswer();
    void withoutTrustNothingIsTried();
    void ownWindowAnswersForItself();
    void fillersAreRemoved();

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

void TestSelectionReader::accessibilityAnswersAlone()
{
    with_->accessibility.selections = {textual(u" 选中的 text "_s)};
    QCOMPARE(with_->reader.currentSelectedText(), u" 选中的 text "_s);
    QCOMPARE(
        with_->calls,
        (FakeCalls{u"request accessibility of 4711"_s, u"focused element"_s, u"selected text"_s}));
}

void TestSelectionReader::rangeRoadFollowsAnEmptySelection()
{
    with_->accessibility.selections = {{}};
    with_->accessibility.range = {3, 5};
    with_->accessibility.rangeText = u"range"_s;
    QCOMPARE(with_->reader.currentSelectedText(), u"range"_s);
    QVERIFY(!with_->calls.contains(u"snapshot"_s));
}

void TestSelectionReader::blankSelectionGoesOnToTheClipboard()
{
    with_->accessibility.selections = {textual(u" \n "_s)};
    with_->primary.owner = applicationPid;
    with_->primary.text = u"  \n"_s;
    with_->pasteboard.copied = u"copied"_s;
    QCOMPARE(with_->reader.currentSelectedText(), u"copied"_s);
    QVERIFY(with_->calls.indexOf(u"primary"_s) < with_->calls.indexOf(u"copy keys"_s));
}

void TestSelectionReader::publishedSelectionNeedsTheRightOwner_data()
{
    QTest::addColumn<std::optional<qint64>>("owner");
    QTest::addColumn<bool>("saysNothing");
    QTest::addColumn<bool>("taken");
    QTest::newRow("the frontmost application's") << std::optional(applicationPid) << false << true;
    QTest::newRow("another's") << std::optional<qint64>(1) << false << false;
    QTest::newRow("nobody's") << std::optional<qint64>() << false << false;
    QTest::newRow("nothing is selected") << std::optional(applicationPid) << true << false;
}

void TestSelectionReader::publishedSelectionNeedsTheRightOwner()
{
    QFETCH(std::optional<qint64>, owner);
    QFETCH(bool, saysNothing);
    QFETCH(bool, taken);
    with_->accessibility.selections = {saysNothing ? nothing : SelectedText()};
    with_->primary.owner = owner;
    with_->primary.text = u"published"_s;
    QCOMPARE(with_->reader.currentSelectedText(),
             taken ? std::optional(u"published"_s) : std::nullopt);
    QCOMPARE(with_->calls.contains(u"snapshot"_s), !taken);
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

void TestSelectionReader::noCopyLeavesTheClipboardAlone()
{
    with_->accessibility.focusedKind.reset();
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QCOMPARE(with_->calls.last(), u"wait for copy"_s);
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
    with_->primary.owner = applicationPid;
    with_->pasteboard.isSlow = true;
    with_->pasteboard.copied = u"copied"_s;
    QElapsedTimer time;
    time.start();
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QCOMPARE_LE(time.elapsed(), 750); // 600, and what a busy machine adds
    QCOMPARE(with_->calls.last(), u"snapshot"_s); // a copy would come when nobody waits for it
}

void TestSelectionReader::terminalReceivesNoKeys()
{
    with_->accessibility.focusedKind = ElementKind::Terminal;
    with_->pasteboard.copied = u"copied"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QVERIFY(!with_->calls.contains(u"copy keys"_s));

    with_->primary.owner = applicationPid;
    with_->primary.text = u"published"_s;
    QCOMPARE(with_->reader.currentSelectedText(), u"published"_s);
}

void TestSelectionReader::passwordIsNeverRead()
{
    with_->accessibility.focusedKind = ElementKind::Password;
    with_->accessibility.selections = {textual(u"secret"_s)};
    with_->primary.owner = applicationPid;
    with_->primary.text = u"secret"_s;
    with_->pasteboard.copied = u"secret"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
    QCOMPARE(with_->calls.last(), u"focused element"_s);
}

void TestSelectionReader::menuFocusIsAskedAgainAfterTheRelease()
{
    with_->accessibility.selections = {nothing, textual(u"found"_s)};
    QCOMPARE(with_->reader.currentSelectedText(), u"found"_s);
    QCOMPARE(with_->events.waitsForRelease, 1);
    QVERIFY(!with_->calls.contains(u"snapshot"_s));
}

void TestSelectionReader::nothingSelectedOutlivesASilentSecondAnswer()
{
    with_->accessibility.selections = {nothing, SelectedText()};
    with_->primary.owner = applicationPid;
    with_->primary.text = u"stale"_s;
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
}

void TestSelectionReader::withoutTrustNothingIsTried()
{
    with_->accessibility.trusted = false;
    with_->accessibility.selections = {textual(u"text"_s)};
    with_->primary.owner = applicationPid;
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

void TestSelectionReader::fillersAreRemoved()
{
    with_->accessibility.selections = {textual(u"\uFFFC😀\uFEFF text\uFFFC"_s)};
    QCOMPARE(with_->reader.currentSelectedText(), u"😀 text"_s);
    with_->accessibility.selections = {textual(u"\uFFFC\uFFFC"_s)};
    QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
}

QTEST_GUILESS_MAIN(TestSelectionReader)
#include "test_selection_reader.moc"
