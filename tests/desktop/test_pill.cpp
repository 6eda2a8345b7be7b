// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"

using namespace vellumo::test;

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

/// The notes pill of the built program, used with a mouse and found through accessibility.
class TestPill : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void reopensANoteAndKeepsWhatIsAskedThen()
    {
        const auto place = pill();
        QVERIFY(place);
        QCOMPARE(place->size(), pillSize);
        QVERIFY(QRect(1280 - 200, 800 - 200, 200, 200).contains(*place));

        QVERIFY(openList());
        const auto newer = vellumo_->waitFor(asked, u"button"_s);
        const auto older = vellumo_->waitFor(u"ubiquitous"_s, u"button"_s);
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

    void staysWhereItIsDragged()
    {
        const auto before = pill();
        QVERIFY(before);
        const QPoint way(-437, -211);
        desktop_.drag(before->center(), before->center() + way);
        const QRect dragged = before->translated(way);
        QVERIFY(waitUntil([&] { return vellumo_->find(u"Notes 2"_s, u"button"_s) == dragged; }));
        QVERIFY(!list()); // it was no click
        QCOMPARE(desktop_.activeWindow(), otherWindow_);

        QVERIFY(openList());
        desktop_.click(desktop_.geometry(otherWindow_).topLeft() + QPoint(40, 60));
        QVERIFY(isFolded());
        QCOMPARE(pill(), dragged);

        QCOMPARE(vellumo_->process().end(), 0);
        QVERIFY(vellumo_->start());
        QCOMPARE(pill(), dragged);
    }

    void escapeIsTheListsBeforeThePanels()
    {
        QVERIFY(openList() && vellumo_->click(asked, u"button"_s) && vellumo_->waitForAnswer());
        // with an unsent question the panel stays and keeps the keyboard while the list opens
        const auto hasKeyboard = [this] { return desktop_.activeWindow() == vellumo_->panel(); };
        QVERIFY(waitUntil([&] {
            return vellumo_->click(u"Ask a follow-up"_s, u"text"_s)
                && waitUntil(hasKeyboard, 500ms);
        }));
        desktop_.type(u"Why"_s);
        QVERIFY(openList());
        QVERIFY(vellumo_->click(u"Notes 2"_s, u"heading"_s)); // inside: nothing happens
        QVERIFY(list());
        desktop_.tap(Key::Escape);
        QVERIFY(isFolded());
        QCOMPARE(pill()->size(), pillSize);
        QVERIFY(vellumo_->panel());
        desktop_.tap(Key::Escape);
        QVERIFY(vellumo_->waitForNoPanel());
    }

private:
    void prepare() override
    {
        if (!other_.isRunning())
            otherWindow_ = other_.start(desktop_).value_or(0);
        QVERIFY(otherWindow_ != 0 && desktop_.activate(otherWindow_));
        const QJsonObject followUp{{u"id"_s, u"00000000-0000-4000-8000-0000000000AA"_s},
                                   {u"question"_s, u"Whose grass"_s},
                                   {u"answer"_s, u"Everybody's"_s}};
        QVERIFY(vellumo_->writeNotes({note(u"ubiquitous"_s, 1, {}), note(asked, 2, {followUp})}));
        QVERIFY(vellumo_->start());
    }

    [[nodiscard]] std::optional<QRect> pill() const
    {
        return vellumo_->waitFor(u"Notes 2"_s, u"button"_s);
    }
    [[nodiscard]] std::optional<QRect> list() const
    {
        return vellumo_->find(u"Notes 2"_s, u"heading"_s);
    }
    [[nodiscard]] bool isFolded() const
    {
        return waitUntil([this] { return !list(); });
    }

    bool openList() const
    {
        const auto heading = vellumo_->click(u"Notes 2"_s, u"button"_s)
            ? vellumo_->waitFor(u"Notes 2"_s, u"heading"_s)
            : std::nullopt;
        // the upper left of the list is uncovered last
        return heading && waitUntil([&] { return hasBrightPixels(desktop_.pixels(*heading)); });
    }

    Application other_{qtTextEdit(u"/dev/null"_s)};
    WindowId otherWindow_ = 0;
};

QTEST_MAIN(TestPill)
#include "test_pill.moc"

#include <QJsonObject>
