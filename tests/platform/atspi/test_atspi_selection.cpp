// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "AtspiFixture.h"
#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

using Kind = SelectedText::Kind;
using Ranges = QList<std::pair<int, int>>;
using Children = QList<QJsonObject>;

constexpr int entry = 79;
constexpr int heading = 83;
constexpr int label = 29;
constexpr int anchor = 88;
constexpr int listItem = 32;
constexpr int page = 84;
constexpr int paragraph = 73;
constexpr int password = 40;
constexpr int section = 85;
constexpr int web = 95;
constexpr int documentFrame = 82;

QJsonObject object(int role, const QString &text, const Ranges &selections = {},
                   const Children &children = {})
{
    QJsonArray ranges;
    for (const auto &[start, end] : selections) {
        ranges.append(QJsonArray{start, end});
    }
    QJsonArray embedded;
    for (const QJsonObject &child : children) {
        embedded.append(child);
    }
    return {
        {u"role"_s, role}, {u"text"_s, text}, {u"selections"_s, ranges}, {u"children"_s, embedded}};
}

QJsonObject with(QJsonObject object, const QString &key, const QJsonValue &value)
{
    object.insert(key, value);
    return object;
}

QJsonObject focused(const QJsonObject &object)
{
    return with(object, u"focused"_s, true);
}

QJsonObject inlineBox(const QString &text)
{
    return with(object(section, text), u"display"_s, u"inline-block"_s);
}

} // namespace

class TestAtspiSelection : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        reader_ = std::make_unique<Reader>(true);
        QVERIFY(reader_->connect());
    }

    void assembles_data()
    {
        QTest::addColumn<QJsonObject>("tree");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QJsonObject &tree, Kind kind,
                            const QString &text = {}) {
            QTest::newRow(name) << tree << static_cast<int>(kind) << text;
        };
        const auto plain = u"第一段 😀 and 🎉 end"_s;
        row("astral offsets", focused(object(entry, plain, {{4, 11}})), Kind::Text, u"😀 and 🎉"_s);
        row("caret", focused(object(entry, plain, {{3, 3}})), Kind::Nothing);
        row("reversed, several", focused(object(entry, plain, {{3, 0}, {12, 15}})), Kind::Text,
            u"第一段\nend"_s);
        row("padding", focused(object(entry, u"😀\uFEFF x"_s, {{0, 4}})), Kind::Text, u"😀 x"_s);

        const auto linked = [](const Ranges &ranges, const Ranges &linkRanges) {
            return object(paragraph, u"🎉 see \uFFFC now"_s, ranges,
                          {object(anchor, u"the 链接"_s, linkRanges)});
        };
        row("link inside",
            focused(object(web, u"\uFFFC"_s, {{0, 1}}, {linked({{2, 10}}, {{0, 6}})})), Kind::Text,
            u"see the 链接 no"_s);
        row("unselected link at the end",
            focused(object(web, u"\uFFFC"_s, {{0, 1}}, {linked({{2, 7}}, {})})), Kind::Text,
            u"see "_s);
        row("paragraphs",
            focused(object(web, u"\uFFFC\uFFFC\uFFFC"_s, {{0, 3}},
                           {object(heading, u"A heading"_s, {{2, 9}}), linked({}, {}),
                            object(paragraph, u"末段 here"_s, {{0, 2}})})),
            Kind::Text, u"heading\n🎉 see the 链接 now\n末段"_s);
        row("text around a block",
            focused(object(section, u"one\uFFFCtwo"_s, {{0, 7}}, {object(section, u"block"_s)})),
            Kind::Text, u"one\nblock\ntwo"_s);
        row("inline box",
            focused(object(paragraph, u"a \uFFFC c"_s, {{0, 5}}, {inlineBox(u"b"_s)})), Kind::Text,
            u"a b c"_s);
        row("bullets",
            focused(object(
                web, u"\uFFFC\uFFFC"_s, {{0, 2}},
                {object(listItem, u"• one"_s, {{0, 5}}), object(listItem, u"• two"_s, {{0, 2}})})),
            Kind::Text, u"one"_s);
        row("controls are no text",
            focused(object(
                paragraph, u"a\uFFFC\uFFFCb"_s, {{0, 4}},
                {object(entry, u"typed"_s, {{0, 5}}), object(password, u"secret"_s, {{0, 6}})})),
            Kind::Text, u"ab"_s);
        const auto fleeting = [](const QString &text, const Children &blocks) {
            const Ranges all{{0, static_cast<int>(text.size())}};
            return with(focused(object(web, text, all, blocks)), u"fleeting"_s, true);
        };
        const auto block = object(paragraph, u"block"_s);
        row("deselected meanwhile", fleeting(u"\uFFFC"_s, {block}), Kind::Nothing);
        row("deselected meanwhile, with a block between the ends",
            fleeting(u"\uFFFC\uFFFC\uFFFC"_s, {block, block, block}), Kind::Nothing);
        row("a picture alone", focused(object(paragraph, u"a\uFFFCb"_s, {{1, 2}})),
            Kind::Unfinished);
        row("focus beside the selection",
            object(web, u"\uFFFC\uFFFC"_s, {{0, 1}},
                   {object(paragraph, u"chosen"_s, {{0, 6}}),
                    object(paragraph, u"\uFFFC"_s, {}, {focused(object(anchor, u"link"_s))})}),
            Kind::Text, u"chosen"_s);

        QJsonObject pages = focused(
            object(documentFrame, {}, {},
                   {object(page, u"first page"_s), object(page, u"second page"_s, {{0, 6}})}));
        pages.remove(u"text"_s);
        row("page of a document", pages, Kind::Text, u"second"_s);
        QJsonArray children = pages.value(u"children").toArray();
        children[0] = object(page, u"first page"_s, {{-1, -1}});
        row("page out of sight", with(pages, u"children"_s, children), Kind::Unknown);

        const auto chromium = [](const QString &text, const Ranges &ranges) {
            const auto tree = object(web, u"\uFFFC"_s, {{0, 1}}, {object(paragraph, text, ranges)});
            return with(focused(tree), u"toolkit"_s, u"Chromium"_s);
        };
        row("Chromium before astral", chromium(plain, {{0, 3}}), Kind::Text, u"第一段"_s);
        row("Chromium behind astral", chromium(plain, {{0, 14}}), Kind::Unfinished);
        row("Chromium far behind astral", chromium(plain, {{0, 0}}), Kind::Unfinished);
        row("longer than anything here works with",
            focused(object(entry, QString(30'000, u'a'), {{0, 30'000}})), Kind::Text,
            QString(maxSelectionLength + 1, u'a'));
        const auto long10 = object(paragraph, QString(10'000, u'a'), {{0, 10'000}});
        row("longer, in several paragraphs",
            focused(object(web, u"\uFFFC\uFFFC\uFFFC"_s, {{0, 3}}, {long10, long10, long10})),
            Kind::Text, QStringList(3, QString(10'000, u'a')).join(u'\n'));
        row("more objects than can be asked",
            focused(object(web, QString(15'000, u'\uFFFC'), {{0, 15'000}})), Kind::Unfinished);
        row("no text", focused(QJsonObject{{u"role"_s, label}}), Kind::Unknown);
    }

    void assembles()
    {
        QFETCH(QJsonObject, tree);
        QFETCH(int, kind);
        QFETCH(QString, text);
        Peer peer(tree);
        QVERIFY(peer.waitUntilReady());
        const SelectedText selected = select(peer);
        QCOMPARE(selected.text, text);
        QCOMPARE(static_cast<int>(selected.kind), kind);
    }

    void neverReadsAPassword()
    {
        Peer peer(focused(object(password, u"secret"_s, {{0, 6}})));
        QVERIFY(peer.waitUntilReady());
        auto element = focusedElement(peer.id());
        QVERIFY(element);
        QCOMPARE(element->kind, ElementKind::Password);
        for (const ElementKind kind : {ElementKind::Password, ElementKind::Ordinary}) {
            element->kind = kind; // the role may have changed since the element was found
            const auto selected = accessibility().selectedText(*element, QDeadlineTimer(1000));
            QCOMPARE(selected.kind, Kind::Unknown);
            QVERIFY(!accessibility().stringForRange(*element, {0, 6}, QDeadlineTimer(1000)));
        }
        QVERIFY(!peer.output().contains(u"read 40"));
    }

    void asksNoOtherService()
    {
        Peer other(focused(object(paragraph, u"of another application"_s, {{0, 22}})));
        QVERIFY(other.waitUntilReady());
        const auto theirs = focusedElement(other.id());
        QVERIFY(theirs);
        const auto elsewhere = with(object(paragraph, u"own"_s), u"elsewhere"_s, theirs->service);
        Peer peer(focused(object(web, u"one \uFFFC two"_s, {{0, 9}}, {elsewhere})));
        QVERIFY(peer.waitUntilReady());
        QCOMPARE(select(peer).text, u"one  two"_s);
        QVERIFY(!other.output().contains(u"read "_s));
    }

    void survivesAFlood()
    {
        const auto flood = object(web, u"\uFFFC"_s, {{0, 1}},
                                  {object(paragraph, QString(9'000'000, u'a'), {{0, 1}})});
        Peer peer(with(focused(flood), u"toolkit"_s, u"Chromium"_s));
        QVERIFY(peer.waitUntilReady());
        QVERIFY(select(peer).text.isEmpty());
        QVERIFY(reader_->connect());
        Peer next(focused(object(entry, u"text"_s, {{0, 4}})));
        QVERIFY(next.waitUntilReady());
        QTRY_COMPARE(select(next).text, u"text"_s);
    }

    void findsTheApplication_data()
    {
        QTest::addColumn<QList<QJsonObject>>("trees");
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("text"); // empty when the application is not to be found
        const auto tree = [](const QString &text) {
            return focused(object(entry, text, {{0, static_cast<int>(text.size())}}));
        };
        const QJsonObject front = tree(u"front"_s);
        const QJsonObject behind = with(tree(u"behind"_s), u"inactive"_s, true);
        const QJsonObject elsewhere = with(tree(u"elsewhere"_s), u"title"_s, u"Elsewhere"_s);
        const QString proxy = u"xdg-dbus-proxy"_s;
        QTest::newRow("the first connection") << QList{front, behind} << QString() << u"front"_s;
        QTest::newRow("the second connection") << QList{behind, front} << QString() << u"front"_s;
        QTest::newRow("two windows that say they are in front")
            << QList{elsewhere, front} << QString() << u"front"_s;
        QTest::newRow("sandbox") << QList{elsewhere, front} << proxy << u"front"_s;
        QTest::newRow("window of another sandbox") << QList{elsewhere} << proxy << QString();
        QTest::newRow("window behind, of another sandbox") << QList{behind} << proxy << QString();
        QTest::newRow("another application") << QList{front} << u"notaproxy"_s << QString();
    }

    void findsTheApplication()
    {
        QFETCH(QList<QJsonObject>, trees);
        QFETCH(QString, program);
        QFETCH(QString, text);
        Peer peer(trees, program);
        QVERIFY(peer.waitUntilReady());
        // The window of a sandboxed program belongs to another process than its connection.
        const auto element = focusedElement(program.isEmpty() ? peer.id() : 1);
        const QString read =
            element ? accessibility().selectedText(*element, QDeadlineTimer(1000)).text : QString();
        QCOMPARE(read, text);
    }

    void answersRangeKindAndPage()
    {
        constexpr int terminal = 60;
        Peer peer(with(focused(object(terminal, u"😀 第二 end"_s, {{2, 4}})), u"address"_s,
                       u"https://example.org/a%7E?q=1#f"_s));
        QVERIFY(peer.waitUntilReady());
        const auto element = focusedElement(peer.id());
        QVERIFY(element);
        QCOMPARE(element->kind, ElementKind::Terminal);
        QCOMPARE(select(peer).text, u"第二"_s);
        Peer scrolled(focused(object(terminal, u"end"_s, {{3, 3}})));
        QVERIFY(scrolled.waitUntilReady());
        QCOMPARE(select(scrolled).kind, SelectedText::Kind::Unfinished);
        const auto range = accessibility().selectedTextRange(*element, QDeadlineTimer(1000));
        QCOMPARE(range, (TextRange{2, 2}));
        QCOMPARE(accessibility().stringForRange(*element, *range, QDeadlineTimer(1000)), u"第二"_s);
        QCOMPARE(accessibility().pageAddress(peer.id(), QDeadlineTimer(1000)),
                 u"https://example.org/a%7E?q=1#f"_s);
    }

private:
    AtspiAccessibility &accessibility() { return *reader_->accessibility; }
    std::optional<AccessibleElement> focusedElement(qint64 process)
    {
        return accessibility().focusedElement(process, QDeadlineTimer(1000));
    }
    SelectedText select(const Peer &peer)
    {
        const auto element = focusedElement(peer.id());
        return element ? accessibility().selectedText(*element, QDeadlineTimer(1000))
                       : SelectedText();
    }

    std::unique_ptr<Reader> reader_;
};

QTEST_GUILESS_MAIN(TestAtspiSelection)
#include "test_atspi_selection.moc"
