// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SessionReport.h"

#include "app/LinuxPlatform.h"
#include "computer/DesktopFacts.h"
#include "computer/DesktopReporting.h"
#include "computer/TapReach.h"
#include "explain/ForwardingExplainer.h"
#include "explain/ServiceSetup.h"
#include "platform/Clock.h"
#include "ui/BilingualText.h"

#include <QSysInfo>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto answerTimeout = 2s;

enum class Verdict : quint8 { Works, Limited, Unknown, Fails };

class Lines {
public:
    void add(Verdict verdict, const QString &title, const QString &text)
    {
        static const QHash<Verdict, QString> words{{Verdict::Works, u"ok"_s},
                                                   {Verdict::Limited, u"limited"_s},
                                                   {Verdict::Unknown, u"unknown"_s},
                                                   {Verdict::Fails, u"FAILS"_s}};
        QString plain = text;
        plain.remove(u'\u2060').replace(u'\n', u' ');
        addPlain(words[verdict].leftJustified(9) + title + u": "_s + plain);
        canWork_ = canWork_ && verdict != Verdict::Fails;
    }
    void addPlain(const QString &line) { text_ += (text_.isEmpty() ? u""_s : u"\n"_s) + line; }

    [[nodiscard]] const QString &text() const { return text_; }
    [[nodiscard]] bool canWork() const { return canWork_; }

private:
    QString text_;
    bool canWork_ = true;
};

void addTaps(Lines &lines, const TapReach &taps, const DesktopReporting &desktop, bool isRunning)
{
    const DesktopChange *extension = desktop.extension();
    const bool isOn = extension != nullptr && extension->state() == DesktopChange::State::Made;
    if (isOn && !isRunning) { // it reports to the running vellumo alone
        lines.add(Verdict::Works, taps.title(),
                  u"In every window, by vellumo's extension of GNOME Shell, which is turned on."_s);
        return;
    }
    lines.add(taps.isEverywhere() ? Verdict::Works : Verdict::Limited, taps.title(), taps.text());
}

void addRoads(Lines &lines, const SessionRoads &roads)
{
    using Windows = SessionRoads::Windows;
    using Front = SessionRoads::Front;
    using Selections = SessionRoads::Selections;
    static const QHash<Windows, QString> windows{{Windows::X11, u"X11"_s},
                                                 {Windows::XWayland, u"XWayland"_s},
                                                 {Windows::Layers, u"Wayland, layer surfaces"_s}};
    static const QHash<Front, QString> fronts{{Front::None, u"none is known now"_s},
                                              {Front::X11, u"X11"_s},
                                              {Front::Sway, u"IPC of sway"_s},
                                              {Front::KWin, u"script in KWin"_s},
                                              {Front::GnomeShell, u"extension of GNOME Shell"_s},
                                              {Front::Accessibility, u"accessibility bus"_s}};
    static const QHash<Selections, QString> selections{
        {Selections::X11, u"X11"_s},
        {Selections::XWayland, u"XWayland"_s},
        {Selections::DataControl, u"data control"_s}};
    // A compositor with data control has layer surfaces, too.
    const bool lacksPlugin =
        roads.windows == Windows::XWayland && roads.selections == Selections::DataControl;
    lines.add(
        lacksPlugin ? Verdict::Limited : Verdict::Works, u"Windows"_s,
        windows[roads.windows]
            + (lacksPlugin ? u", not over full-screen windows; install qt6-wayland"_s : QString()));
    lines.add(roads.front == Front::None ? Verdict::Unknown : Verdict::Works, u"Window in front"_s,
              fronts[roads.front]);
    lines.add(Verdict::Works, u"Published selections and clipboard"_s,
              selections[roads.selections]);
}

void addService(Lines &lines, const ServiceSetup &service, const ForwardingExplainer &explainer)
{
    using Use = ServiceSetup::Use;
    static const QHash<Use, QString> uses{{Use::Samples, u"samples"_s},
                                          {Use::Configured, u"by the configured service"_s},
                                          {Use::Own, u"by the user's service"_s},
                                          {Use::Environment, u"by the environment's service"_s}};
    const bool isFaulty = service.configurationFault().has_value();
    lines.add(isFaulty || service.use() == Use::Samples ? Verdict::Limited : Verdict::Works,
              u"Explanations"_s,
              isFaulty ? u"samples, because of a mistake in the configuration"_s
                       : uses[service.use()]);
    if (const auto &failure = explainer.lastFailure()) {
        lines.add(Verdict::Limited, u"Last explanation"_s, describe(*failure));
    }
}

} // namespace

void SessionReport::write(Completion completion)
{
    completion_ = std::move(completion);
    const auto look = [this] {
        if (isAnswered()) {
            finish();
        }
    };
    connect(&with_.desktop, &DesktopReporting::changed, this, look, Qt::QueuedConnection);
    with_.desktop.refresh();
    for (DesktopChange *change :
         {with_.desktop.tapSetting(), with_.desktop.extension(), with_.desktop.shortcut()}) {
        if (change != nullptr) {
            connect(change, &DesktopChange::changed, this, look, Qt::QueuedConnection);
            change->refresh();
        }
    }
    with_.clock.after(answerTimeout, this, [this] { finish(); });
}

bool SessionReport::isAnswered() const
{
    const auto isKnown = [](const DesktopChange *change) {
        return change == nullptr || change->state() != DesktopChange::State::Unknown;
    };
    return with_.platform.sessionBus().connection() && !with_.desktop.isConnecting()
        && with_.desktop.keyring() != DesktopReporting::Keyring::Asking
        && isKnown(with_.desktop.tapSetting()) && isKnown(with_.desktop.extension())
        && isKnown(with_.desktop.shortcut());
}

void SessionReport::finish()
{
    const auto completion = std::exchange(completion_, nullptr);
    if (!completion) {
        return;
    }
    const BilingualText english([] { return u"English"_s; });
    const Accessibility &accessibility = with_.platform.accessibility();
    Lines lines;
    lines.addPlain(QStringLiteral("vellumo " VELLUMO_VERSION ", Qt %1, %2 %3")
                       .arg(QString::fromLatin1(qVersion()), QSysInfo::prettyProductName(),
                            QSysInfo::currentCpuArchitecture()));
    lines.add(accessibility.isProcessTrusted() ? Verdict::Works : Verdict::Fails, u"Permission"_s,
              accessibility.isProcessTrusted()
                  ? u"vellumo may read what is selected"_s
                  : u"vellumo may not read what is selected; it asks when its window opens"_s);
    addTaps(lines, TapReach(with_.desktop, english, with_.defaults), with_.desktop,
            with_.isRunning);
    addRoads(lines, with_.desktop.roads());
    const QList<DesktopFact> facts = desktopFacts(with_.desktop, accessibility, english);
    for (const DesktopFact &fact : facts) {
        // Without it, a Wayland session shows no selection at all.
        const bool isNeeded = fact.name == "accessibility"_L1 && with_.desktop.isWayland();
        lines.add(fact.works          ? Verdict::Works
                      : !fact.isKnown ? Verdict::Unknown
                      : isNeeded      ? Verdict::Fails
                                      : Verdict::Limited,
                  fact.title, fact.text);
    }
    addService(lines, with_.service, with_.explainer);
    completion(lines.text(), lines.canWork());
}

} // namespace vellumo
