// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The models of the main window: names of days and places, search, grouping, counts.

#include "WindowDesk.h"
#include "driver/Waiting.h"
#include "insights/NotesInsights.h"
#include "insights/NotesOverview.h"
#include "library/NotePlace.h"
#include "library/OpenedNote.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

const ReadingContext siteA{u"web-url:https://a.test/1"_s, u"a.test"_s,
                           ReadingContextSource::webURL};
const ReadingContext siteA2{u"web-url:https://a.test/2"_s, u"a.test"_s,
                            ReadingContextSource::webURL};
const ReadingContext paper{u"app-window:reader:Paper.pdf"_s, u"Paper.pdf"_s,
                           ReadingContextSource::appWindow};

NoteWithContext noteOf(double createdAt, const QString &source,
                       const ReadingContext &context = paper)
{
    NoteWithContext entry;
    entry.note = {QUuid::createUuid(), source, {}, u"meaning of "_s + source, createdAt, {}};
    entry.context = context;
    return entry;
}

struct Shelf {
    SampleNotes store;
    FakeClock clock;
    QString language = u"English"_s;
    BilingualText texts{[this] { return language; }};
    NotesLibrary library{store, clock, texts};
    NotesOverview overview{library, clock, texts};
    NotesInsights insights{library, texts};

    explicit Shelf(const QList<NoteWithContext> &notes)
    {
        clock.now = eveningOfTheDay;
        store.notes = notes;
        library.setShown(true);
    }
    /// Returns headings with their number, and notes, in one line.
    [[nodiscard]] QString rows()
    {
        QStringList rows;
        const QAbstractItemModel &model = *library.rows();
        for (int row = 0; row < model.rowCount(); ++row) {
            const auto value = [&](int role) { return model.index(row, 0).data(role).toString(); };
            rows << (model.index(row, 0).data(NoteRowsModel::IsHeading).toBool()
                         ? u"[%1 %2]"_s.arg(value(NoteRowsModel::Title),
                                            value(NoteRowsModel::FollowUps))
                         : value(NoteRowsModel::Title));
        }
        return rows.join(u' ');
    }
};

} // namespace

class TestNotesLibrary : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "Asia/Shanghai"); }

    void namesDays()
    {
        // the day is Monday, 23 November 2026, 03:00 in Shanghai
        const double now = eveningOfTheDay;
        const struct {
            double time;
            QString english; // day, then the moment in a list
            QString chinese;
        } rows[] = {
            {now, u"Today|03:00"_s, u"今天|03:00"_s},
            {now - 3 * 3600, u"Today|00:00"_s, u"今天|00:00"_s},
            {now - 3 * 3600 - 1, u"Yesterday|Yesterday"_s, u"昨天|昨天"_s},
            {now - 3 * day, u"Friday, 20 November|20 November"_s, u"11月20日 星期五|11月20日"_s},
            {now - 365 * day, u"Sunday, 23 November 2025|23 November 2025"_s,
             u"2025年11月23日 星期日|2025年11月23日"_s},
            {std::nan(""), u"Monday, 1 January 2001|1 January 2001"_s,
             u"2001年1月1日 星期一|2001年1月1日"_s},
        };
        const QDate today = NoteDates::localTime(now).date();
        for (const auto &[time, english, chinese] : rows) {
            const QDateTime at = NoteDates::localTime(time);
            for (const bool isEnglish : {true, false})
                QCOMPARE(NoteDates::day(at.date(), today, isEnglish) + u'|'
                             + NoteDates::moment(at, today, isEnglish),
                         isEnglish ? english : chinese);
        }
    }

    void finds()
    {
        Shelf shelf({noteOf(eveningOfTheDay, u"one"_s),
                     noteOf(eveningOfTheDay - 1, u"two"_s, siteA),
                     noteOf(eveningOfTheDay - 2, u"three"_s, siteA2)});
        shelf.store.notes[0].note.followUps = {{QUuid::createUuid(), u"Why so?"_s, u"Because."_s}};
        shelf.store.notes[2].note.translation = u"第三个"_s;
        Q_EMIT shelf.store.vellumoNotesDidChange();
        const auto settled = [&] {
            QCoreApplication::processEvents();
            return shelf.rows().remove(QRegularExpression(u"\\[[^]]*\\] ?"_s));
        };
        const std::pair<QString, QString> rows[] = {
            {u"  "_s, u"one two three"_s},
            {u"TWO"_s, u"two"_s},
            {u"meaning"_s, u"one two three"_s},
            {u"第三"_s, u"three"_s},
            {u"why so"_s, u"one"_s},
            {u"because"_s, u"one"_s},
            {u"a.test"_s, u"two three"_s},
            {u"meaning a.test th"_s, u"three"_s},
            {u"one two"_s, {}},
            {u".*"_s, {}},
        };
        for (const auto &[query, found] : rows) {
            for (qsizetype length = 1; length <= query.size(); ++length) // as it is typed
                shelf.library.setQuery(query.first(length));
            QCOMPARE(settled(), found);
            shelf.library.setQuery({});
            QCOMPARE(settled(), u"one two three"_s);
        }
    }

    void groups()
    {
        Shelf shelf({noteOf(eveningOfTheDay, u"one"_s),
                     noteOf(eveningOfTheDay - 1, u"two"_s, siteA),
                     noteOf(eveningOfTheDay - day, u"three"_s),
                     noteOf(eveningOfTheDay - 400 * day, u"four"_s, siteA2)});
        QCOMPARE(shelf.rows(),
                 u"[Today 2] one two [Yesterday 1] three [Sunday, 19 October 2025 1] four"_s);
        const QSignalSpy redrawn(shelf.library.rows(), &QAbstractItemModel::dataChanged);
        shelf.language = u"Chinese"_s;
        shelf.texts.refresh();
        QCOMPARE(redrawn.size(), 1);
        QCOMPARE(shelf.rows(), u"[今天 2] one two [昨天 1] three [2025年10月19日 星期日 1] four"_s);
        shelf.library.setGrouping(NoteRowsModel::Grouping::ByPlace);
        QCOMPARE(shelf.rows(), u"[Paper.pdf 2] one three [a.test 1] two [a.test 1] four"_s);
        QCOMPARE(shelf.library.noteAt(2)->note.sourceText, u"three"_s);
        for (const int row : {-1, 0, 100}) {
            QCOMPARE(shelf.library.noteAt(row), nullptr);
        }
    }

    void sortsAndFolds()
    {
        using Order = NoteRowsModel::Order;
        QList<NoteWithContext> notes = {noteOf(eveningOfTheDay, u"one"_s),
                                        noteOf(eveningOfTheDay - 1, u"two"_s, siteA),
                                        noteOf(eveningOfTheDay - day, u"three"_s),
                                        noteOf(eveningOfTheDay - 2 * day, u"four"_s)};
        notes[2].note.followUps = {{}, {}};
        notes[3].note.followUps = {{}};
        Shelf shelf(notes);
        NotesLibrary &library = shelf.library;
        library.setOrder(Order::OldestFirst);
        QCOMPARE(shelf.rows(),
                 u"[Saturday, 21 November 1] four [Yesterday 1] three [Today 2] two one"_s);
        library.setOrder(Order::MostFollowUps);
        QCOMPARE(shelf.rows(), u"three four one two"_s);
        library.setFolded(0, true); // no group
        library.setGrouping(NoteRowsModel::Grouping::ByPlace);
        QCOMPARE(shelf.rows(), u"[Paper.pdf 3] three four one [a.test 1] two"_s);
        QCOMPARE(library.foundNotes().chosen, (QList{0, 1, 2, 3}));

        library.setFolded(2, true);
        library.setFolded(0, true); // is already
        QCOMPARE(shelf.rows(), u"[Paper.pdf 3] [a.test 1] two"_s);
        QCOMPARE(library.isFolded(0), true);
        QCOMPARE(library.isFolded(1), false);
        QCOMPARE(library.headingOf(2), 1);
        library.setFolded(2, true);
        QCOMPARE(library.isFolded(1), true); // the last one
        library.setFolded(0, false);
        QCOMPARE(shelf.rows(), u"[Paper.pdf 3] three four one [a.test 1]"_s);
        library.setOrder(Order::NewestFirst); // stays folded
        QCOMPARE(shelf.rows(), u"[Paper.pdf 3] one three four [a.test 1]"_s);
        library.setQuery(u"two"_s);
        library.setFolded(4, true); // while the search is under way
        QVERIFY(waitUntil([&] { return !library.isSearching(); }));
        QCOMPARE(shelf.rows(), u"[a.test 1] two"_s);
    }

    void followsTheStoreWhileItIsShown()
    {
        Shelf shelf({noteOf(eveningOfTheDay - 1, u"one"_s)});
        const auto add = [&](const QString &source) {
            const NoteWithContext entry = noteOf(eveningOfTheDay, source);
            shelf.store.add(entry.note, entry.context);
            QCoreApplication::processEvents();
        };
        add(u"two"_s);
        QCOMPARE(shelf.rows(), u"[Today 2] two one"_s);
        shelf.library.setShown(false);
        add(u"three"_s);
        QCOMPARE(shelf.rows(), u"[Today 2] two one"_s);
        shelf.clock.now += day;
        shelf.library.setShown(true);
        QCOMPARE(shelf.rows(), u"[Yesterday 3] three two one"_s);
    }

    void searchesManyInSlices()
    {
        constexpr int count = 100'000;
        QList<NoteWithContext> notes;
        const QString filler = QString(u"lorem ipsum dolor sit amet "_s).repeated(20);
        for (int i = 0; i < count; ++i) {
            notes.append(noteOf(eveningOfTheDay - i, u"note %1 %2"_s.arg(i).arg(filler)));
        }
        Shelf shelf(notes);
        shelf.library.setQuery(u"note 9999 zebra"_s);
        shelf.library.setQuery(u"99999"_s); // while the other still runs
        shelf.library.setGrouping(NoteRowsModel::Grouping::ByPlace);
        QVERIFY(waitUntil([&] { return !shelf.library.isSearching(); }, std::chrono::minutes(1)));
        QCOMPARE(shelf.library.found(), 1);
        QVERIFY(shelf.rows().startsWith("[Paper.pdf 1] note 99999 lorem"_L1));

        // the results stay until the notes have been searched again
        const QSignalSpy refreshed(&shelf.library, &NotesLibrary::rowsRefreshed);
        shelf.store.add(noteOf(eveningOfTheDay, u"another 99999"_s).note, paper);
        QVERIFY(waitUntil([&] { return shelf.library.isSearching(); }));
        const NotesLibrary::Excerpt found = shelf.library.foundNotes();
        QCOMPARE(found.chosen.size(), 1);
        QVERIFY(found.notes[found.chosen[0]].note.sourceText.startsWith("note 99999"_L1));
        QVERIFY(!shelf.library.hasFound());
        QCOMPARE(refreshed.size(), 0);
        QVERIFY(waitUntil([&] { return shelf.library.found() == 2; }, std::chrono::minutes(1)));
        QVERIFY(shelf.library.hasFound());
        QCOMPARE(refreshed.size(), 1);
    }

    void countsDaysAndPlaces()
    {
        // in Shanghai the month began 22 days and three hours ago
        const double monthBegin = eveningOfTheDay - (22 * day + 3 * 3600);
        Shelf shelf(
            {noteOf(eveningOfTheDay + 2 * day, u"of tomorrow"_s),
             noteOf(eveningOfTheDay, u"a"_s, siteA), noteOf(eveningOfTheDay - 60, u"b"_s, siteA2),
             noteOf(eveningOfTheDay - 90, u"c"_s), noteOf(eveningOfTheDay - 13 * day, u"d"_s),
             noteOf(monthBegin, u"first of this month"_s),
             noteOf(monthBegin - 1, u"last of the month before"_s),
             noteOf(monthBegin - 31 * day, u"first of it"_s),
             noteOf(monthBegin - 31 * day - 1, u"too old"_s)});
        const NotesOverview &seen = shelf.overview;
        QCOMPARE(seen.summary(), u"You looked up 3 things today, mostly on a.test."_s);
        QCOMPARE(seen.thisMonth(), 5);
        QCOMPARE(seen.comparison(), u"3 more than in October"_s);
        QCOMPARE(seen.days(), (QList<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3}));
        QCOMPARE(seen.placeNames(), (QStringList{u"Paper.pdf"_s, u"a.test"_s}));
        QCOMPARE(seen.placeCounts(), (QList<int>{4, 2}));
        QCOMPARE(seen.greeting(), u"Good evening"_s);

        QSignalSpy changes(&shelf.overview, &NotesOverview::changed);
        shelf.clock.now += 3 * 3600; // 06:00
        shelf.overview.followClock();
        shelf.overview.followClock();
        QCOMPARE(seen.greeting(), u"Good morning"_s);
        QCOMPARE(changes.size(), 1);
        shelf.store.notes = {noteOf(eveningOfTheDay, u"pulled"_s,
                                    {u"cloud"_s, u"Synced"_s, ReadingContextSource::appWindow})};
        Q_EMIT shelf.store.vellumoNotesDidChange();
        QCoreApplication::processEvents();
        QCOMPARE(seen.summary(), u"You looked up one thing today."_s);
    }

    void recognizesLanguages()
    {
        const std::pair<const char *, const char *> rows[] = {
            {"The tide turns twice a day, and nobody asks it why.", "English"},
            {"La marée monte et descend dans les ports qui sont profonds", "French"},
            {"DER MOND IST AUFGEGANGEN UND FÜR ALLE DA", "German"},
            {"El agua de los ríos no es como la del mar", "Spanish"},
            {"the", "Undetermined (Latin script)"},
            {"theş andş thatş withş thisş whichş fromş", "Undetermined (Latin script)"},
            {"Từ điển và ngôn ngữ của người Việt", "Undetermined (Latin script)"},
            {"潮水每天涨落两次,没有人问 it 为什么", "Chinese"},
            {"経済", "Undetermined (Han characters)"},
            {"潮は一日に二度満ちる", "Japanese"},
            {"밀물은 하루에 두 번", "Korean"},
            {"Прилив два раза в день", "Undetermined (Cyrillic script)"},
            {"\xf0\xa0\x80\x80\xf0\xa0\x80\x81", "Undetermined (Han characters)"}, // beyond 16 bits
            {"= 42 %", "Numbers and signs"},
            {"", "Numbers and signs"},
        };
        for (const auto &[given, language] : rows) {
            const QString text = QString::fromUtf8(given);
            QVERIFY2(nameOf(readingLanguage(text), true) == QLatin1StringView(language), given);
            const QString unended = QString(1'000'000, u' ') + text; // only the beginning counts
            QCOMPARE(readingLanguage(unended), ReadingLanguage::NoLetters);
        }
    }

    void takesAWordForItsPlacesLanguage()
    {
        const auto at = [](const ReadingContext &place, const QString &text) {
            return noteOf(eveningOfTheDay, text, place);
        };
        const ReadingContext elsewhere{u"web-url:https://b.test/"_s, u"b.test"_s,
                                       ReadingContextSource::webURL};
        Shelf shelf({at(siteA, u"the tide that turns twice"_s), at(siteA, u"ubiquitous"_s),
                     at(siteA, u"経済"_s), at(paper, u"der Mond ist nicht da"_s),
                     at(paper, u"der und die, ein Satz"_s), at(paper, u"the tide that turns"_s),
                     at(paper, u"Kindergarten"_s), at(elsewhere, u"ubiquitous"_s)});
        shelf.insights.setShown(true);
        QCOMPARE(shelf.insights.languageNames(),
                 (QStringList{u"English"_s, u"German"_s, u"Undetermined (Han characters)"_s,
                              u"Undetermined (Latin script)"_s}));
        QCOMPARE(shelf.insights.languageCounts(), (QList<int>{3, 3, 1, 1}));
        QCOMPARE(shelf.insights.languagePercents(), (QList<int>{38, 38, 12, 12})); // of 37.5, 12.5
    }

    void countsADayAndAMonth_data()
    {
        QTest::addColumn<double>("time");
        QTest::addColumn<QString>("firstDay"); // of the week
        QTest::addColumn<int>("daysBefore"); // today; -1 for none of those that are shown
        QTest::addColumn<int>("monthsBefore");
        const double today = eveningOfTheDay - 3 * 3600; // Monday, 23 November, 00:00 in Shanghai
        const QString monday = u"de_DE"_s;
        const QString sunday = u"en_US"_s;
        QTest::newRow("now") << eveningOfTheDay << monday << 0 << 0;
        QTest::newRow("midnight") << today << sunday << 0 << 0;
        QTest::newRow("before midnight") << today - 0.001 << sunday << 1 << 0;
        QTest::newRow("the month's begin") << today - 22 * day << monday << 22 << 0;
        QTest::newRow("before it") << today - 22 * day - 1 << monday << 23 << 1;
        QTest::newRow("first day") << today - 52 * 7 * day << monday << 364 << -1;
        QTest::newRow("before it all") << today - 52 * 7 * day - 1 << monday << -1 << -1;
        QTest::newRow("first day, from Sunday on")
            << today - (52 * 7 + 1) * day << sunday << 365 << -1;
        QTest::newRow("first month") << today - (22 + 334) * day << monday << 356 << 11;
        QTest::newRow("tomorrow") << today + day << monday << -1 << -1;
    }

    void countsADayAndAMonth()
    {
        QFETCH(double, time);
        QFETCH(QString, firstDay);
        QLocale::setDefault(QLocale(firstDay));
        const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
        Shelf shelf({noteOf(time, u"a"_s)});
        shelf.insights.setShown(true);
        const auto before = [](const QList<int> &counts) {
            const qsizetype found = counts.indexOf(1);
            return found < 0 ? -1 : static_cast<int>(counts.size() - 1 - found);
        };
        QTEST(before(shelf.insights.days()), "daysBefore");
        QTEST(before(shelf.insights.months()), "monthsBefore");
        QCOMPARE(shelf.insights.total(), 1);
        const int today = static_cast<int>(shelf.insights.days().size()) - 1;
        QCOMPARE(shelf.insights.dayText(today, 1, true), u"Today: one note"_s);
        QStringList begun = shelf.insights.monthsBegun();
        begun.removeAll(QString());
        QCOMPARE(begun.join(u' '), u"Dec Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov"_s);
    }

    void countsManyInSlices()
    {
        constexpr int count = 100'000;
        QList<NoteWithContext> notes;
        for (int i = 0; i < count; ++i) {
            notes.append(noteOf(eveningOfTheDay - i * 600.0, u"it has been said that %1"_s.arg(i),
                                i % 3 == 0 ? siteA : paper));
        }
        Shelf shelf(notes);
        QSignalSpy changes(&shelf.insights, &NotesInsights::changed);
        shelf.insights.setShown(true);
        shelf.insights.setShown(false); // cancels the count
        shelf.store.add(notes[0].note, siteA2);
        QCoreApplication::processEvents();
        QCOMPARE(changes.size(), 0);
        shelf.insights.setShown(true);
        QVERIFY(waitUntil([&] { return shelf.insights.total() == count + 1; }));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(shelf.insights.placeCounts(), (QList<int>{66'666, 33'335}));
        QCOMPARE(shelf.insights.languageCounts(), QList<int>{count + 1});
        QCOMPARE(shelf.insights.summary(), u"100001 notes on 696 days."_s);
    }

    void opensOnlyPages()
    {
        const QString page = u"https://a.test/x?y=%20z#part"_s;
        const auto opens = [](const QString &key) {
            return pageOf({key, u"shown"_s, ReadingContextSource::webURL})
                .toString(QUrl::FullyEncoded);
        };
        QCOMPARE(opens(u"web-url:"_s + page), page);
        QCOMPARE(opens(u"web-url:http://a.test/"_s), u"http://a.test/"_s);
        for (const auto &key :
             {u"web-url:javascript:alert(1)"_s, u"web-url:file:///etc/passwd"_s,
              u"web-url:https:///x"_s, u"web-url:about:blank"_s, u"app-window:https://a.test/"_s})
            QCOMPARE(opens(key), QString());
    }

    void copiesTheWholeNote()
    {
        NoteWithContext entry = noteOf(0, QString(1'000'000, u'x'), siteA);
        entry.note.followUps = {{QUuid::createUuid(), u"Why?"_s, u"So."_s}};
        QCOMPARE(OpenedNote::asText(entry),
                 entry.note.sourceText + u"\n\n"_s + entry.note.explanation
                     + u"\n\n> Why?\n\nSo.\n\nhttps://a.test/1\n"_s);
        Shelf shelf({entry});
        SampleHost host;
        OpenedNote opened(shelf.library, host, shelf.texts);
        opened.openLatest(0);
        QVERIFY(opened.isShortened());
        QVERIFY(opened.sourceText().size() < 30'000);
    }
};

QTEST_MAIN(TestNotesLibrary)
#include "test_notes_library.moc"
