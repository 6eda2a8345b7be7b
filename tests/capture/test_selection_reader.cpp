// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/AccessibilitySelectionReader.h"
#include "capture/ReadingBudget.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"

#include <QTest>
#include <functional>

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

/// How the application in front answers in each of the three ways, and what is expected.
struct Roads {
    std::optional<ElementKind> focused = ElementKind::Ordinary;
    bool isTapped = false; ///< Option, twice, 300 ms apart
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
    void init()
    {
        with_ = std::make_unique<Fixture>();
        with_->workspace.frontmost = {applicationPid, u"Editor"_s, u"org.editor"_s};
        with_->pasteboard.contents = usersClipboard;
    }

    void triesTheRoadsInOrder_data()
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
            {.published = text,
             .publication = publication(60s),
             .changes = {4s},
             .lastCall = copies});
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
            {.isTapped = true,
             .selections = {nothing},
             .published = text,
             .publication = publication(5s),
             .changes = {200ms, 5s},
             .expected = text,
             .lastCall = takesPublished});
        row("dropped by the user just before the taps",
            {.isTapped = true,
             .selections = {nothing},
             .published = text,
             .publication = publication(5s),
             .changes = {350ms, 5s},
             .lastCall = copies});
        row("dropped in an editor, which a tap does not do",
            {.isTapped = true,
             .isEditable = true,
             .selections = {nothing},
             .published = text,
             .publication = publication(5s),
             .changes = {200ms, 5s},
             .lastCall = u"selected range"_s});
        row("dropped by the tap itself, after another change",
            {.isTapped = true,
             .selections = {nothing},
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
            {.selections = {nothing, textual(text)},
             .expected = text,
             .lastCall = u"selected text"_s});
        row("blank on both roads before the copy",
            {.selections = {textual(u" \n "_s)},
             .published = u"\uFFFC \n"_s,
             .copied = text,
             .expected = text,
             .lastCall = u"write"_s});
        row("a terminal receives no keys",
            {.focused = ElementKind::Terminal, .copied = text, .lastCall = u"primary"_s});
        row("a terminal that counts wide characters twice",
            {.focused = ElementKind::Terminal,
             .selections = {textual(u"潮水 turns"_s)},
             .published = u"潮水"_s,
             .expected = u"潮水"_s,
             .lastCall = u"primary"_s});
        row("a terminal that counts lines that have scrolled away",
            {.focused = ElementKind::Terminal,
             .selections = {textual(u"another line"_s)},
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

    void triesTheRoadsInOrder()
    {
        QFETCH(Roads, roads);
        with_->accessibility.focusedKind = roads.focused;
        for (const qint64 time : {1000, 1300}) {
            if (roads.isTapped) {
                with_->events.sendGlobal(
                    {EventType::FlagsChanged, ModifierFlag::Option, KeyCode::Other, time});
            }
        }
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
        const bool isCopied = with_->calls.contains(u"copy keys"_s);
        QCOMPARE(with_->events.waitsForRelease, mayBeInMenu || isCopied ? 1 : 0);
    }

    void copyRestoresTheClipboard()
    {
        with_->accessibility.focusedKind.reset();
        with_->pasteboard.copied = u"copied"_s;
        for (const auto &before : {usersClipboard, QList<PasteboardItem>()}) {
            with_->calls.clear();
            with_->pasteboard.contents = before;
            QCOMPARE(with_->reader.currentSelectedText(), u"copied"_s);
            QCOMPARE(with_->pasteboard.contents, before);
            QCOMPARE(with_->calls,
                     (FakeCalls{u"request accessibility of 4711"_s, u"focused element"_s,
                                u"may keys be posted"_s, u"snapshot"_s, u"copy keys"_s,
                                u"wait for copy"_s, u"read copy"_s,
                                before.isEmpty() ? u"clear"_s : u"write"_s}));
        }
    }

    void noKeysWithoutNeed_data()
    {
        using Hindrance = std::function<void(Fixture &)>;
        QTest::addColumn<Hindrance>("hinder");
        QTest::addColumn<QString>("lastCall");
        const auto row = [](const char *name, const Hindrance &hinder, const QString &lastCall) {
            QTest::newRow(name) << hinder << lastCall;
        };
        row(
            "a clipboard that cannot be kept",
            [](Fixture &with) { with.pasteboard.contents.reset(); }, u"snapshot"_s);
        row(
            "keys that do not arrive", [](Fixture &with) { with.keys.canPost = false; },
            u"may keys be posted"_s);
        row(
            "a question timed out", [](Fixture &with) { with.accessibility.unresponsive = true; },
            u"focused element"_s);
        row(
            "Option stays down", [](Fixture &with) { with.events.isHeld = true; },
            u"may keys be posted"_s);
        const auto setting = [&](const char *name, const QString &key, const QVariant &value) {
            row(
                name, [=](Fixture &with) { with.settings.setValue(key, value); },
                u"focused element"_s);
        };
        setting("switched off", u"readsByCopying"_s, false);
        setting("switched off for the id", u"noCopyingIn"_s,
                QStringList{u"org.other"_s, u"org.Editor"_s});
        setting("switched off for the name", u"noCopyingIn"_s, u"editor"_s);
    }

    void noKeysWithoutNeed()
    {
        QFETCH(std::function<void(Fixture &)>, hinder);
        QFETCH(QString, lastCall);
        with_->accessibility.focusedKind.reset();
        with_->pasteboard.copied = u"copied"_s;
        with_->settings.setValue(u"noCopyingIn"_s, u"org.other"_s);
        hinder(*with_);
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        QCOMPARE(with_->calls.last(), lastCall);
    }

    void copyOfAnotherProcessIsNotTaken()
    {
        with_->accessibility.focusedKind.reset();
        with_->pasteboard.copied = u"copied"_s;
        for (const bool isTakenOver : {false, true}) {
            with_->pasteboard.contents = usersClipboard;
            with_->pasteboard.copier = isTakenOver ? applicationPid : 1;
            with_->pasteboard.successor = isTakenOver ? std::optional<qint64>(1) : std::nullopt;
            QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
            QCOMPARE(with_->pasteboard.contents == usersClipboard, isTakenOver);
        }
    }

    void undoesALateCopy_data()
    {
        QTest::addColumn<qint64>("process");
        QTest::addColumn<Event>("act"); ///< of the user before it comes
        QTest::addColumn<int>("times");
        QTest::addColumn<bool>("isUndone");
        const Event tap{.modifierFlags = 0, .timestampMs = 90};
        const Event early{.modifierFlags = ModifierFlag::Control, .timestampMs = 90};
        const Event late{.modifierFlags = ModifierFlag::Control, .timestampMs = 110};
        const Event click{.type = EventType::LeftMouseDown, .timestampMs = 100};
        const qint64 other = 1;
        QTest::newRow("of the process that was asked") << applicationPid << tap << 1 << true;
        QTest::newRow("twice") << applicationPid << tap << 2 << true;
        QTest::newRow("before the user pressed Control") << applicationPid << late << 1 << true;
        QTest::newRow("made by the user") << applicationPid << early << 1 << false;
        QTest::newRow("made by the user with the mouse") << applicationPid << click << 1 << false;
        QTest::newRow("of another process") << other << tap << 1 << false;
    }

    void undoesALateCopy()
    {
        QFETCH(qint64, process);
        QFETCH(Event, act);
        QFETCH(int, times);
        QFETCH(bool, isUndone);
        const QList<PasteboardItem> late = {{{u"UTF8_STRING"_s, "late"}}};
        with_->accessibility.focusedKind.reset();
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        with_->events.sendGlobal(act);
        for (int i = 0; i < times; ++i) {
            with_->pasteboard.put(late, process, 100);
            QCOMPARE(with_->pasteboard.contents, isUndone ? usersClipboard : late);
        }
    }

    /// A copy by the user is not seen where owners are not named.
    void undoesAnAnonymousLateCopyForAMoment()
    {
        const QList<PasteboardItem> late = {{{u"UTF8_STRING"_s, "late"}}};
        with_->pasteboard.isNaming = false;
        with_->accessibility.focusedKind.reset();
        for (const bool isSoon : {true, false}) {
            QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
            if (!isSoon) {
                QTest::qWait(600);
            }
            with_->pasteboard.put(late, applicationPid, 100);
            QCOMPARE(with_->pasteboard.contents, isSoon ? usersClipboard : late);
        }
    }

    void waitsLongerForASlowApplication()
    {
        with_->accessibility.focusedKind.reset();
        with_->pasteboard.copied = u"copied"_s;
        with_->pasteboard.copyingTime = std::chrono::milliseconds(250);
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        with_->pasteboard.put({{{u"UTF8_STRING"_s, "copied"}}}, applicationPid, 100); // late
        QCOMPARE(with_->reader.currentSelectedText(), u"copied"_s);
        QCOMPARE(with_->pasteboard.contents, usersClipboard);
    }

    void hangingRoadsShareOneBudget()
    {
        with_->accessibility.hangs = true;
        with_->primary.hangs = true;
        with_->primary.published = Publication{applicationPid, {}, false, {}};
        with_->pasteboard.isSlow = true;
        with_->pasteboard.copied = u"copied"_s;
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        QCOMPARE(with_->calls.last(), u"snapshot"_s); // a copy would come after the reading
        QCOMPARE_LE(with_->budget.contextDeadline().remainingTime(),
                    ReadingBudget::contextReserve.count());
    }

    void withoutTrustNothingIsTried()
    {
        with_->accessibility.trusted = false;
        with_->accessibility.selections = {textual(u"text"_s)};
        with_->primary.published = Publication{applicationPid, {}, false, {}};
        with_->primary.text = u"text"_s;
        with_->pasteboard.copied = u"text"_s;
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        QVERIFY(with_->calls.isEmpty());
    }

    void ownWindowAnswersForItself()
    {
        with_->workspace.ownWindowActive = true;
        with_->workspace.ownSelection = u"own"_s;
        QCOMPARE(with_->reader.currentSelectedText(), u"own"_s);
        with_->workspace.ownSelection.clear();
        QCOMPARE(with_->reader.currentSelectedText(), std::nullopt);
        QVERIFY(with_->calls.isEmpty());
    }

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
        FakeDefaultsStore settings;
        AccessibilitySelectionReader reader{
            {workspace, accessibility, pasteboard, &primary, keys, events, &settings}, budget};
    };
    std::unique_ptr<Fixture> with_;
};

QTEST_GUILESS_MAIN(TestSelectionReader)
#include "test_selection_reader.moc"
