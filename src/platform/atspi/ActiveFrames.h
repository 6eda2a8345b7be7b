// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/atspi/AtspiProtocol.h"
#include "platform/atspi/UnresponsiveServices.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QList>
#include <functional>
#include <memory>

namespace vellumo {

class ActiveFrameSearch;
class AtspiBus;

/// Finds the window in front by the state "active" of its frame on the accessibility bus.
/// Applications without accessibility are not seen. Windows of this process are ignored.
class ActiveFrames : public FrontWindows {
    Q_OBJECT

public:
    /// `bus` must outlive this object. `isOfDesktop` returns whether the process is the desktop's
    /// shell, whose menus and overview are active at times but are no application's windows.
    ActiveFrames(AtspiBus &bus, std::function<bool(qint64)> isOfDesktop);
    ~ActiveFrames() override;

    /// While no frame is known to be active, each call may start a search for one, which ends with
    /// changed() if it is found.
    [[nodiscard]] std::optional<FrontWindow> frontWindow() override;
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier) override;

private Q_SLOTS:
    void onStateChanged(const QDBusMessage &message);

private:
    /// An activated object whose role and process are awaited.
    struct Candidate {
        ObjectReference object;
        std::chrono::steady_clock::time_point since;
        QDBusPendingCall role;
        QDBusPendingCall process;
        QDBusPendingCall name;
        int attempt = 0; ///< number of times that it was asked before
        bool isPaused = false; ///< it did not answer and is asked again later
    };

    void listenOn(const QDBusConnection &bus);
    void forget();
    void setInactive();
    void searchUnlessKnown();
    void consider(const ObjectReference &object, std::chrono::steady_clock::time_point since,
                  int attempt = 0);
    void settle(const ObjectReference &object);
    void take(const Candidate &candidate);
    void leave(const ObjectReference &object);
    [[nodiscard]] QDBusPendingCall askName(const ObjectReference &frame);
    /// Asks the application in front for its name, which it did not report in time.
    void askNameAgain(int attempt);
    [[nodiscard]] QDBusPendingCall ask(const ObjectReference &object, const char *interface,
                                       const char *method, const QVariantList &arguments = {});

    AtspiBus &bus_;
    std::function<bool(qint64)> isOfDesktop_;
    UnresponsiveServices unresponsive_;
    QList<Candidate> candidates_; ///< in the order of their activation
    QList<ObjectReference> left_; ///< the frames that have last reported to be inactive
    std::unique_ptr<ActiveFrameSearch> search_; ///< while it runs
    std::chrono::steady_clock::time_point lastSearch_;
    std::optional<QDBusServiceWatcher> frontService_;
    ObjectReference frame_;
    std::optional<FrontWindow> front_;
};

} // namespace vellumo
