// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/AccessibleTree.h"
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString asked = u"the tragedy of the commons"_s;
constexpr QSize pillSize(118, 44);

QJsonObject note(const QString &source, double createdAt, const QJsonArray &followUps)
{
    return {{u"id"_s, u"00000000-0000-4000-8000-%1"_s.arg(createdAt, 12, 'f', 0, u'0')},
            {u"sourceText"_s, source},
            {u"translation"_s, u"译文"_s},
            {u"explanation"_s, u"explained"_s},
            {u"createdAt"_s, createdAt},
            {u"followUps"_s, followUps}};
}

QJsonDocument someNotes()
{
    const QJsonObject followUp{{u"id"_s, u"00000000-0000-4000-8000-0000000000AA"_s},
                               {u"question"_s, u"Whose grass"_s},
                               {u"answer"_s, u"Everybody's"_s}};
    const QJsonObject bucket{
        {u"context"_s,
         QJsonObject{{u"key"_s, u"web-url:https://a.test/"_s},
                     {u"displayName"_s, u"a.test"_s},
                     {u"source"_s, u"webURL"_s}}},
        {u"notes"_s, QJsonArray{note(u"ubiquitous"_s, 1, {}), note(asked, 2, {followUp})}}};
    return QJsonDocument(QJsonObject{{u"buckets"_s, QJsonArray{bucket}}});
}

bool hasBrightPixels(const QImage &image)
{
    constexpr int bright = 200;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) > bright)
                return true;
        }
    }
    return false;
}

} // namespace

/// The notes pill of the built program, found by what it tells screen readers and used with a
/// mouse.
class TestPill : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void reopensANoteAndKeepsWhatIsAskedThen();
    void staysWhereItIsDragged();
    void foldsAsAPersonExpects_data();
    void foldsAsAPersonExpects();

private:
    [[nodiscard]] QString folder() const;
    /// Where the element lies that screen readers meet under this name.
    [[nodiscard]] std::optional<QRect> find(const QString &role, const QString &name) const;
    /// The same, once it rests in one place.
    [[nodiscard]] std::optional<QRect> waitFor(const QString &role, const QString &name) const;
    [[nodiscard]] bool waitUntilGone(const QString &role, const QString &name) const;
    [[nodiscard]] std::optional<QRect> pill() const { return waitFor(u"button"_s, u"Notes 2"_s); }
    [[nodiscard]] bool isFolded() const { return waitUntilGone(u"heading"_s, u"Notes 2"_s); }
    bool openList() const;
    bool reopenNote() const;

    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Application> other_;
    WindowId otherWindow_ = 0;
};

QString TestPill::folder() const
{
    return u"pill-%1-%2"_s.arg(QLatin1StringView(QTest::currentTestFunction()),
                               QLatin1StringView(QTest::currentDataTag()));
}

void TestPill::init()
{
    other_ = std::make_unique<Application>(qtTextEdit(u"/dev/null"_s));
    const auto window = other_->start(desktop_);
    QVERIFY(window && desktop_.activate(*window));
    otherWindow_ = *window;

    vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder());
    QDir().mkpath(QFileInfo(vellumo_->notesFile()).path());
    QFile file(vellumo_->notesFile());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(someNotes().toJson()) > 0);
    file.close();
    QVERIFY(vellumo_->start());
}

void TestPill::cleanup()
{
    if (QTest::currentTestFailed())
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput() << vellumo_->panelText();
    vellumo_.reset();
    other_.reset();
}

std::optional<QRect> TestPill::find(const QString &role, const QString &name) const
{
    const auto items = accessibleItems(vellumo_->process().processIdentifier());
    for (const AccessibleItem &item : items) {
        if (item.role.endsWith(role) && item.name == name)
            return item.extents;
    }
    return std::nullopt;
}

std::optional<QRect> TestPill::waitFor(const QString &role, const QString &name) const
{
    std::optional<QRect> last;
    const bool rests = waitUntil([&] {
        const auto before = std::exchange(last, find(role, name));
        return last && last == before;
    });
    return rests ? last : std::nullopt;
}

bool TestPill::waitUntilGone(const QString &role, const QString &name) const
{
    return waitUntil([&] { return !find(role, name); });
}

bool TestPill::openList() const
{
    const auto place = pill();
    // drawn, for a screen reader, is not yet mapped by a window manager that is behind
    const auto isInFront = [&] {
        return desktop_.windows(u"vellumo"_s).contains(desktop_.windowAt(place->center()));
    };
    if (!place || !waitUntil(isInFront))
        return false;
    desktop_.click(place->center());
    const auto heading = waitFor(u"heading"_s, u"Notes 2"_s);
    // the list's upper left is uncovered last
    return heading && waitUntil([&] { return hasBrightPixels(desktop_.pixels(*heading)); });
}

bool TestPill::reopenNote() const
{
    const auto card = openList() ? waitFor(u"button"_s, asked) : std::nullopt;
    if (!card)
        return false;
    desktop_.click(card->center());
    return vellumo_->waitForPanel() && vellumo_->waitForAnswer();
}

void TestPill::reopensANoteAndKeepsWhatIsAskedThen()
{
    const auto place = pill();
    QVERIFY(place);
    QCOMPARE(place->size(), pillSize);
    QVERIFY(QRect(1280 - 200, 800 - 200, 200, 200).contains(*place));

    QVERIFY(openList());
    const auto newer = waitFor(u"button"_s, asked);
    const auto older = waitFor(u"button"_s, u"ubiquitous"_s);
    QVERIFY(newer && older && newer->bottom() < older->top());
    QCOMPARE(desktop_.activeWindow(), otherWindow_); // neither took the keyboard

    desktop_.click(newer->center());
    QVERIFY(vellumo_->waitForPanel() && vellumo_->waitForAnswer());
    QVERIFY(isFolded());
    QVERIFY(vellumo_->waitForText(u"Whose grass"_s) && vellumo_->waitForText(u"Everybody's"_s));
    QVERIFY(!vellumo_->panelText().contains("sample answer"_L1));

    QVERIFY(vellumo_->ask(u"Why grass"_s));
    QVERIFY(vellumo_->waitForText(u"「Why grass」"_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNoPanel());
    QCOMPARE(pill(), place);
    const auto questions = [this] {
        QStringList list;
        const QList<QJsonObject> notes = vellumo_->notes();
        for (const QJsonObject &saved : notes) {
            const QJsonArray followUps = saved["followUps"_L1].toArray();
            for (const QJsonValue &followUp : followUps)
                list << saved["sourceText"_L1].toString() + u": "_s
                        + followUp["question"_L1].toString();
        }
        return list;
    };
    const QStringList expected{asked + u": Whose grass"_s, asked + u": Why grass"_s};
    QVERIFY(waitUntil([&] { return questions() == expected; }));
    QCOMPARE(vellumo_->notes().size(), 2);
}

void TestPill::staysWhereItIsDragged()
{
    const auto before = pill();
    QVERIFY(before);
    const QPoint way(-437, -211);
    desktop_.drag(before->center(), before->center() + way);
    const QRect dragged = before->translated(way);
    QVERIFY(waitUntil([&] { return find(u"button"_s, u"Notes 2"_s) == dragged; }));
    QVERIFY(!find(u"heading"_s, u"Notes 2"_s)); // it was no click
    QCOMPARE(desktop_.activeWindow(), otherWindow_);

    QVERIFY(openList());
    desktop_.click(desktop_.geometry(otherWindow_).topLeft() + QPoint(40, 60));
    QVERIFY(isFolded());
    QCOMPARE(pill(), dragged);

    QCOMPARE(vellumo_->process().end(), 0);
    QVERIFY(vellumo_->start());
    QCOMPARE(pill(), dragged);
}

void TestPill::foldsAsAPersonExpects_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("a click elsewhere") << u"click"_s;
    QTest::newRow("scrolling elsewhere") << u"scroll"_s;
    QTest::newRow("Escape in a window of ours") << u"escape"_s;
}

void TestPill::foldsAsAPersonExpects()
{
    QFETCH(QString, how);
    if (how == "escape"_L1) {
        // a question that was begun keeps the panel, and the keyboard, while the list opens
        QVERIFY(reopenNote());
        const auto field = waitFor(u"text"_s, u"Ask a follow-up"_s);
        QVERIFY(field);
        const auto hasKeyboard = [this] { return desktop_.activeWindow() == vellumo_->panel(); };
        QVERIFY(waitUntil([&] {
            desktop_.click(field->center());
            return waitUntil(hasKeyboard, 500ms);
        }));
        desktop_.type(u"Why"_s);
    }
    QVERIFY(openList());
    desktop_.click(waitFor(u"heading"_s, u"Notes 2"_s)->center()); // inside: nothing happens
    QVERIFY(find(u"heading"_s, u"Notes 2"_s));

    const QPoint elsewhere = desktop_.geometry(otherWindow_).topLeft() + QPoint(40, 60);
    if (how == "escape"_L1)
        desktop_.tap(Key::Escape);
    else
        desktop_.click(elsewhere, 1, how == "scroll"_L1 ? 5 : 1);
    QVERIFY(isFolded());
    QCOMPARE(pill()->size(), pillSize);
    if (how == "escape"_L1) {
        QVERIFY(vellumo_->panel()); // the next Escape is the panel's
        desktop_.tap(Key::Escape);
        QVERIFY(vellumo_->waitForNoPanel());
    }
}

QTEST_MAIN(TestPill)
#include "test_pill.moc"
