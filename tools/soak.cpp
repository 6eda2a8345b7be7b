// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_soak PROGRAM MINUTES SEED: simulates a hasty user with an unreliable service: selects,
// double-taps, asks, scrolls, closes, switches applications and screens, in an order determined by
// the seed. Ends with the resources of vellumo at the beginning, half-way and at the end, and with
// the number of notes in its file compared with those made.
#include "HeldResources.h"
#include "driver/Desktop.h"
#include "driver/Editor.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include "http/HttpServer.h"
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void say(const QString &text)
{
    std::puts(qPrintable(text));
    std::fflush(stdout);
}

constexpr std::array sizes{QSize(1280, 800), QSize(1024, 768), QSize(800, 600)};

constexpr int widestPanel = 620;
const QString editorClass = u"plain_text_edit"_s;

QString modeOf(QSize size)
{
    return u"soak-%1x%2"_s.arg(size.width()).arg(size.height());
}

HttpAnswer modelSays(const QString &reply)
{
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, reply}};
    const QJsonArray choices{QJsonObject{{u"message"_s, message}}};
    return {.body = QJsonDocument(QJsonObject{{u"choices"_s, choices}}).toJson()};
}

class Soak {
public:
    Soak(const QString &program, unsigned seed)
        : chance_(seed)
        , vellumo_(desktop_, program, u"soak"_s)
        , editors_{Editor(desktop_, u"The tide turns twice a day, and nobody asks it why."_s),
                   Editor(desktop_, u"A pen draws the rise and fall on a drum of paper."_s)}
    {
        service_.answerWith([this](const HttpReceived & /*request*/) { return answer(); });
    }

    [[nodiscard]] bool start();
    /// Runs one explanation or another action. Returns a description of a failure, or nothing.
    [[nodiscard]] QString round();
    [[nodiscard]] QString end();

    /// Returns the window in front, for the report of a failure.
    [[nodiscard]] QString scene() const
    {
        const WindowId window = desktop_.activeWindow();
        const QRect place = desktop_.geometry(window);
        return u"in front is \"%1\" at %2,%3 (%4x%5)%6"_s.arg(desktop_.title(window))
            .arg(place.x())
            .arg(place.y())
            .arg(place.width())
            .arg(place.height())
            .arg(vellumo_.panel() ? u", and the panel is shown"_s : QString());
    }

    [[nodiscard]] HeldResources held()
    {
        return heldResources(vellumo_.process().processIdentifier());
    }
    [[nodiscard]] QString counts() const
    {
        return u"%1 readings, %2 in vain and %3 where nothing was selected, %4 without an answer, "
               "%5 follow-ups, %6 changes of the screen"_s.arg(readings_)
                   .arg(unread_)
                   .arg(strays_)
                   .arg(failures_)
                   .arg(followUps_)
                   .arg(screens_);
    }
    [[nodiscard]] qsizetype notesMade() const { return made_; }
    [[nodiscard]] qsizetype notesInFile() const { return vellumo_.notes().size(); }

private:
    [[nodiscard]] int pick(int count)
    {
        return std::uniform_int_distribution<int>(0, count - 1)(chance_);
    }
    [[nodiscard]] HttpAnswer answer();
    /// Activates the editor. A tap of Alt leaves its menu bar active; the click ends that.
    [[nodiscard]] bool turnTo(size_t editor);
    [[nodiscard]] QString read();
    [[nodiscard]] QString readNothing();
    /// Double-taps, asks some questions and closes the panel.
    [[nodiscard]] QString explain(bool isSelected);
    [[nodiscard]] QString askFollowUps();
    [[nodiscard]] QString close();
    [[nodiscard]] QString lookAtTheWindow();
    [[nodiscard]] QString changeScreen();
    void scroll();

    Desktop desktop_;
    std::mt19937 chance_;
    HttpServer service_;
    Program vellumo_;
    std::array<Editor, 2> editors_;
    std::array<WindowId, 2> windows_{};
    size_t front_ = 0;
    QSize screen_{1280, 800};
    int answers_ = 0;
    bool wasAsked_ = false; ///< a question was asked in the panel, which then has the keyboard
    qsizetype made_ = 0;
    qsizetype readings_ = 0;
    qsizetype unread_ = 0; ///< selections that were not read in time
    qsizetype strays_ = 0; ///< explanations although nothing was selected
    qsizetype failures_ = 0;
    qsizetype followUps_ = 0;
    qsizetype screens_ = 0;
};

bool Soak::start()
{
    for (const QSize size : sizes) {
        const QString width = QString::number(size.width());
        const QString height = QString::number(size.height());
        const QString mode = modeOf(size);
        outputOf(u"xrandr"_s,
                 {u"--newmode"_s, mode, u"0"_s, width, u"0"_s, u"0"_s, u"0"_s, height, u"0"_s,
                  u"0"_s, u"0"_s});
        outputOf(u"xrandr"_s, {u"--addmode"_s, u"screen"_s, mode});
    }
    vellumo_.setEnvironment(u"OPENAI_API_KEY"_s, u"sk-soak"_s);
    vellumo_.setEnvironment(u"OPENAI_BASE_URL"_s, service_.url(u"/v1"_s).toString());
    if (!vellumo_.start()) {
        return false;
    }
    for (size_t i = 0; i < editors_.size(); ++i) {
        const QList<WindowId> before = desktop_.windows(editorClass);
        if (!editors_[i].open()) {
            return false;
        }
        // both windows have the same class and title
        for (const WindowId window : desktop_.windows(editorClass)) {
            if (!before.contains(window)) {
                windows_[i] = window;
            }
        }
    }
    return true;
}

HttpAnswer Soak::answer()
{
    const QString number = u"Answer %1."_s.arg(++answers_);
    HttpAnswer good = modelSays(QString::fromUtf8(
        QJsonDocument(QJsonObject{{u"intent"_s, u"x"_s},
                                  {u"translation"_s, u"潮汐"_s},
                                  {u"explanation"_s, number.repeated(1 + pick(60))}})
            .toJson()));
    switch (pick(12)) {
    case 0:
        return {.status = "503 Service Unavailable", .body = "<html>busy</html>"};
    case 1:
        return {.status = "429 Too Many Requests", .body = R"({"error":{"message":"slower"}})"};
    case 2:
        good.stopsAfter = 40;
        good.closes = true;
        return good;
    case 3:
        return {.body = "{\"choices\":"};
    case 4:
        good.delay = 700ms;
        return good;
    case 5:
        good.closes = true;
        return good;
    default:
        return good;
    }
}

QString Soak::round()
{
    switch (pick(12)) {
    case 0:
        return readNothing();
    case 1:
        return changeScreen();
    case 2:
        return lookAtTheWindow();
    default:
        return read();
    }
}

bool Soak::turnTo(size_t editor)
{
    front_ = editor;
    // the window manager may still give the keyboard to another window
    return waitUntil(
        [&] {
            if (!desktop_.activate(windows_[editor])) {
                return false;
            }
            desktop_.click(desktop_.geometry(windows_[editor]).center());
            return editors_[editor].selectNothing();
        },
        60s);
}

QString Soak::read()
{
    const auto editor = static_cast<size_t>(pick(2));
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (!turnTo(editor)) {
            return u"the editor did not come to the front"_s;
        }
        if (editors_[editor].selectAll()) {
            return explain(true);
        }
        say(u"not selected, "_s + scene());
    }
    return u"nothing could be selected"_s;
}

QString Soak::readNothing()
{
    return turnTo(front_) ? explain(false) : u"the selection stayed"_s;
}

QString Soak::explain(bool isSelected)
{
    desktop_.doubleTap();
    if (!vellumo_.waitForPanel()) {
        return u"no panel"_s;
    }
    bool isAnswered = false;
    bool isRefused = false; // because nothing is selected
    const bool isOver = waitUntil([&] {
        const QString shown = vellumo_.panelText();
        isAnswered = shown.contains("Answer "_L1);
        isRefused = shown.contains("Select text first."_L1);
        return isAnswered || isRefused || shown.contains("vellumo could not explain this yet."_L1);
    });
    if (!isOver) {
        return u"neither an answer nor an error: "_s + vellumo_.panelText();
    }
    wasAsked_ = false;
    if (isAnswered) {
        if (const QString fault = askFollowUps(); !fault.isEmpty()) {
            return fault;
        }
        scroll();
    }
    if (const QString fault = close(); !fault.isEmpty()) {
        return fault;
    }
    if (isRefused) {
        unread_ += isSelected ? 1 : 0;
    } else {
        (isSelected ? readings_ : strays_) += 1;
        (isAnswered ? made_ : failures_) += 1;
    }
    return {};
}

QString Soak::askFollowUps()
{
    for (int count = pick(3); count > 0; --count) {
        const int before = answers_;
        if (!vellumo_.ask(u"why"_s)) {
            return u"the follow-up field took no text"_s;
        }
        wasAsked_ = true;
        ++followUps_;
        const bool isOver = waitUntil([&] {
            return answers_ > before && !vellumo_.panelText().contains("Waiting for the answer"_L1);
        });
        if (!isOver) {
            return u"the follow-up was not answered"_s;
        }
    }
    return {};
}

void Soak::scroll()
{
    const auto panel = vellumo_.panel();
    for (int count = panel ? pick(6) : 0; count > 0; --count) {
        // near its top: a short panel does not fill its window, and below it the wheel would reach
        // the root window, where it switches desktops
        const QRect place = desktop_.geometry(*panel);
        desktop_.click({place.center().x(), place.top() + 40}, 1, pick(2) == 0 ? 4 : 5);
    }
}

QString Soak::close()
{
    // in the editor: outside of it, clicks have other meanings for window managers
    const QRect editor = desktop_.geometry(windows_[front_]);
    const QPoint elsewhere(editor.left() + 8, std::min(editor.bottom(), screen_.height() - 1) - 8);
    switch (pick(4)) {
    case 0:
        desktop_.click(elsewhere);
        break;
    case 1:
        desktop_.click(elsewhere, 1, 5); // scrolls
        break;
    case 2:
        if (wasAsked_) {
            desktop_.tap(Key::Escape);
            break;
        }
        [[fallthrough]];
    default:
        desktop_.doubleTap();
    }
    // a double tap while the panel closes would read again
    return vellumo_.waitForNoPanel(5s) || vellumo_.dismissPanel() ? QString()
                                                                  : u"the panel stayed"_s;
}

QString Soak::lookAtTheWindow()
{
    const auto second = vellumo_.another();
    if (!second->launch() || !second->waitForEnd(patience)) {
        return u"nothing was handed over"_s;
    }
    std::optional<WindowId> window;
    const bool hasCome = waitUntil([&] {
        const QList<WindowId> all = desktop_.windows(u"vellumo"_s);
        const auto found = std::ranges::find_if(
            all, [this](WindowId each) { return desktop_.geometry(each).width() > widestPanel; });
        window = found == all.end() ? std::nullopt : std::optional(*found);
        return window.has_value();
    });
    if (!hasCome || !desktop_.activate(*window)) {
        return u"the window did not come"_s;
    }
    const bool isClosed = waitUntil([&] {
        desktop_.chord(Key::ControlLeft, Key::W);
        return waitUntil([&] { return !desktop_.isVisible(*window); }, 500ms);
    });
    return isClosed ? QString() : u"the window stayed"_s;
}

QString Soak::changeScreen()
{
    const QSize size = sizes[static_cast<size_t>(pick(static_cast<int>(sizes.size())))];
    outputOf(u"xrandr"_s, {u"--output"_s, u"screen"_s, u"--mode"_s, modeOf(size)});
    if (!waitUntil([&] { return QGuiApplication::primaryScreen()->size() == size; })) {
        return u"the screen stayed as it was"_s;
    }
    screens_ += size == screen_ ? 0 : 1;
    screen_ = size;
    return {};
}

QString Soak::end()
{
    if (!vellumo_.process().isRunning()) {
        return u"vellumo has ended by itself: "_s + vellumo_.process().errorOutput();
    }
    if (!vellumo_.waitForNotes(made_)) {
        return u"there are other notes than were made"_s;
    }
    const auto status = vellumo_.process().end();
    return status == 0 ? QString() : u"vellumo did not end well"_s;
}

/// Prints the resources of vellumo and the number of its notes.
struct Held {
    HeldResources resources;
    qsizetype notes = 0;
};

void printFigures(const std::array<Held, 3> &all)
{
    const auto row = [&all](const QString &name, int decimals, auto valueOf) {
        QStringList cells{name};
        for (const Held &held : all) {
            cells.append(QString::number(static_cast<double>(valueOf(held)), 'f', decimals));
        }
        say(u"| %1 |"_s.arg(cells.join(u" | "_s)));
    };
    say(u"| what | at the beginning | half-way | at the end |\n|---|---|---|---|"_s);
    row(u"notes made"_s, 0, [](const Held &held) { return held.notes; });
    row(u"resident memory, MB"_s, 1,
        [](const Held &held) { return held.resources.residentMegabytes; });
    row(u"private dirty memory, MB"_s, 1,
        [](const Held &held) { return held.resources.privateDirtyMegabytes; });
    row(u"threads"_s, 0, [](const Held &held) { return held.resources.threads; });
    row(u"file descriptors"_s, 0, [](const Held &held) { return held.resources.fileDescriptors; });
    row(u"X resources"_s, 0, [](const Held &held) { return held.resources.xResources; });
    row(u"pixmaps in the X server, MB"_s, 1,
        [](const Held &held) { return held.resources.xPixmapMegabytes; });
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4) {
        say(u"vellumo_soak PROGRAM MINUTES SEED"_s);
        return EXIT_FAILURE;
    }
    const std::chrono::seconds time(std::lround(arguments[2].toDouble() * 60));
    const QDeadlineTimer halfTime(time / 2);
    const QDeadlineTimer deadline(time);
    Soak soak(arguments[1], arguments[3].toUInt());
    if (!soak.start()) {
        say(u"vellumo or the editors did not start"_s);
        return EXIT_FAILURE;
    }
    const auto held = [&soak] { return Held{soak.held(), soak.notesMade()}; };
    std::array<Held, 3> figures;
    QString fault;
    int rounds = 0;
    const auto readUntil = [&](int most, const QDeadlineTimer &end) {
        while (fault.isEmpty() && rounds < most && !end.hasExpired()) {
            fault = soak.round();
            ++rounds;
        }
        return held();
    };
    // after some rounds of each kind, everything that is created once exists, such as windows
    constexpr int warmUp = 80;
    constexpr int unlimited = std::numeric_limits<int>::max();
    figures = {readUntil(warmUp, deadline), readUntil(unlimited, halfTime),
               readUntil(unlimited, deadline)};
    const qsizetype inFile = soak.notesInFile();
    if (!fault.isEmpty()) {
        say(soak.scene());
    } else {
        fault = soak.end();
    }
    say(u"%1 rounds with the seed %2: "_s.arg(QString::number(rounds), arguments[3])
        + soak.counts());
    printFigures(figures);
    say(u"notes in the file: %1, made: %2"_s.arg(QString::number(inFile),
                                                 QString::number(soak.notesMade())));
    if (!fault.isEmpty()) {
        say(u"FAILED: "_s + fault);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
