// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandSession.h"
#include "platform/wayland/WaylandEventMonitors.h"

#include "platform/atspi/ActiveFrames.h"
#include "platform/atspi/AltKeys.h"
#include "platform/atspi/AtspiBus.h"
#include "platform/wayland/BridgedPrimarySelection.h"
#include "platform/wayland/ChosenFrontWindows.h"
#include "platform/wayland/HelperTaps.h"
#include "platform/wayland/KWinWindows.h"
#include "platform/wayland/ShellWindows.h"
#include "platform/wayland/SwayConnection.h"
#include "platform/wayland/SwayTaps.h"
#include "platform/wayland/SwayWindows.h"
#include "platform/wayland/WaylandClipboardText.h"
#include "platform/wayland/WaylandKeyPosting.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandWorkspace.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/X11ClipboardText.h"
#include <QLibrary>

namespace vellumo {

namespace {

using waylandClientModule::Client;

std::unique_ptr<Client> makeClient(const QString &clientModule)
{
    const auto make = reinterpret_cast<waylandClientModule::MakeClient>(
        QLibrary::resolve(clientModule, waylandClientModule::makeClient));
    return std::unique_ptr<Client>(make != nullptr ? make() : nullptr);
}

/// Returns the bits of the keys in a request to the service that reports taps.
std::uint8_t altKeys(OptionKeys keys)
{
    using namespace tapProtocol;
    return static_cast<std::uint8_t>((keys.left ? AltKey::Left : 0)
                                     | (keys.right ? AltKey::Right : 0));
}

class Session : public WaylandSession {
public:
    Session(X11Backend &x11, SessionBus &session, AtspiBus &accessibility,
            const QString &clientModule)
        : x11_(x11)
        , sway_(SwayConnection::socketOfSession(),
                [this](qint64 process) { return mayBeCompositor(process); })
        , swayWindows_(sway_)
        , kwinWindows_(session, [this](qint64 process) { return mayBeCompositor(process); })
        , companion_(session, [this](qint64 process) { return mayBeCompositor(process); })
        , shellWindows_(companion_)
        , frames_(accessibility, [this](qint64 process) { return process == compositor(); })
        , frontWindows_({&swayWindows_, &kwinWindows_, &shellWindows_, &frames_})
        , workspace_(x11.workspace(), frontWindows_)
        , altKeys_(accessibility)
        , swayTaps_(sway_)
        , helperTaps_(QString::fromLatin1(tapProtocol::socketPath),
                      [&x11] { return altKeys(x11.optionKeys()); })
        , events_(x11.eventMonitoring())
        , client_(makeClient(clientModule))
        , primarySelection_(x11.primarySelection(),
                            client_ ? &client_->primarySelection() : nullptr, frontWindows_,
                            [this] { return compositor(); })
        , pasteboard_(x11.pasteboard(), client_ ? &client_->clipboard() : nullptr,
                      [this] { return frontProcess(); })
        , clipboardText_(x11ClipboardText_, client_.get())
        , keyPosting_(x11.keyPosting(), x11.workspace(), frontWindows_,
                      client_ ? &client_->copyKeys() : nullptr)
    {
        events_.add(altKeys_);
        events_.add(swayTaps_);
        events_.add(helperTaps_);
        events_.add(companion_.taps());
        connect(&events_, &WaylandEventMonitors::reachChanged, this, &WaylandSession::reachChanged);
        // Without the user's consent this bus is closed, and no tap is listened for.
        setListening(accessibility.isOpen());
        connect(&accessibility, &AtspiBus::opened, this, [this] { setListening(true); });
        connect(&accessibility, &AtspiBus::closed, this, [this] { setListening(false); });
        sway_.open();
    }

    EventMonitoring &events() override { return events_; }
    Workspace &workspace() override { return workspace_; }
    PrimarySelection &primarySelection() override { return primarySelection_; }
    Pasteboard &pasteboard() override { return pasteboard_; }
    KeyPosting &keyPosting() override { return keyPosting_; }
    ClipboardText &clipboardText() override { return clipboardText_; }
    SessionRoads roads() override
    {
        using Front = SessionRoads::Front;
        using Selections = SessionRoads::Selections;
        return {.front = swayWindows_.frontWindow()            ? Front::Sway
                    : kwinWindows_.frontWindow()               ? Front::KWin
                    : shellWindows_.frontWindow()              ? Front::GnomeShell
                    : frames_.frontWindow()                    ? Front::Accessibility
                    : x11_.workspace().isForeignWindowActive() ? Front::X11
                                                               : Front::None,
                .selections = client_ && client_->clipboard().isAvailable()
                    ? Selections::DataControl
                    : Selections::XWayland,
                .copiesEverywhere = client_ && client_->copyKeys().areAvailable()};
    }
    [[nodiscard]] bool hearsEveryTap() const override { return events_.hearsEveryWindow(); }
    void addTaps(TapSource &source) override { events_.add(source); }
    std::optional<QString> windowTitle(qint64 processIdentifier) override
    {
        return workspace_.windowTitle(processIdentifier);
    }

private:
    void setListening(bool isListening)
    {
        swayTaps_.setListening(isListening);
        helperTaps_.setListening(isListening);
        companion_.setFollowing(isListening);
    }

    /// The compositor is the window manager of XWayland.
    [[nodiscard]] std::optional<qint64> compositor() { return x11_.windows().managerProcess(); }

    [[nodiscard]] std::optional<qint64> frontProcess()
    {
        const auto front = workspace_.frontmostApplication();
        return front ? std::optional(front->processIdentifier) : std::nullopt;
    }

    [[nodiscard]] bool mayBeCompositor(qint64 process)
    {
        return process == compositor().value_or(process);
    }

    X11Backend &x11_;
    SwayConnection sway_;
    SwayWindows swayWindows_;
    KWinWindows kwinWindows_;
    ShellCompanion companion_;
    ShellWindows shellWindows_;
    ActiveFrames frames_;
    ChosenFrontWindows frontWindows_;
    WaylandWorkspace workspace_;
    AltKeys altKeys_;
    SwayTaps swayTaps_;
    HelperTaps helperTaps_;
    WaylandEventMonitors events_;
    std::unique_ptr<Client> client_; ///< null where there is no compositor
    BridgedPrimarySelection primarySelection_;
    WaylandPasteboard pasteboard_;
    X11ClipboardText x11ClipboardText_;
    WaylandClipboardText clipboardText_;
    WaylandKeyPosting keyPosting_;
};

} // namespace

std::unique_ptr<WaylandSession> WaylandSession::make(X11Backend &x11, SessionBus &session,
                                                     AtspiBus &accessibility,
                                                     const QString &clientModule)
{
    return std::make_unique<Session>(x11, session, accessibility, clientModule);
}

} // namespace vellumo
