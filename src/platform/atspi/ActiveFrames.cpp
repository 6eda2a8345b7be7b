// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/ActiveFrames.h"

#include "platform/atspi/ActiveFrameSearch.h"
#include "platform/atspi/AtspiBus.h"
#include "platform/atspi/AtspiQuestion.h"
#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QTimer>
#include <algorithm>

using namespace std::chrono_literals;

namespace vellumo {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int replyTimeoutMs = 150;
constexpr auto titleTime = 50ms;

/// Number of times that an application that does not answer is asked, with doubling pauses.
constexpr int maxQuestions = 5;
constexpr auto attemptPause = 250ms;

/// Minimum time between two searches.
constexpr auto searchPause = 500ms;
constexpr qsizetype maxLeft = 256;

bool isWindowRole(Atspi::Role role)
{
    return role == Atspi::Role::Frame || role == Atspi::Role::Dialog || role == Atspi::Role::Alert
        || role == Atspi::Role::FileChooser || role == Atspi::Role::Window;
}

} // namespace

ActiveFrames::ActiveFrames(AtspiBus &bus, std::function<bool(qint64)> isOfDesktop)
    : bus_(bus)
    , isOfDesktop_(std::move(isOfDesktop))
{
    connect(&bus_, &AtspiBus::opened, this, &ActiveFrames::listenOn);
    connect(&bus_, &AtspiBus::closed, this, &ActiveFrames::forget);
    if (const auto open = bus_.connection()) {
        listenOn(*open);
    }
}

ActiveFrames::~ActiveFrames() = default;

void ActiveFrames::listenOn(const QDBusConnection &bus)
{
    QDBusConnection connection = bus;
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                       QStringLiteral("StateChanged"), {QStringLiteral("active")}, QString(), this,
                       SLOT(onStateChanged(QDBusMessage)));
    Atspi::registerEvent(connection, QStringLiteral("object:state-changed:active"));
    if (!front_) {
        front_.emplace();
        setInactive(); // until one is found
    }
    searchUnlessKnown();
}

void ActiveFrames::forget()
{
    search_.reset();
    candidates_.clear();
    left_.clear();
    frontService_.reset();
    frame_ = {};
    if (front_ && front_->isActive) {
        setInactive();
    }
}

void ActiveFrames::setInactive()
{
    front_->isActive = false;
    front_->since = Clock::now();
    Q_EMIT changed();
}

/// Looks for an active frame that has not been reported: it was active before this object listened,
/// or its application started and did not report it. GTK 4 does not report the state of a window
/// that gets the keyboard before its accessible object is there.
void ActiveFrames::searchUnlessKnown()
{
    const auto bus = bus_.connection();
    const bool isKnown = !front_ || front_->isActive || !candidates_.isEmpty();
    if (isKnown || !bus || search_ || Clock::now() - lastSearch_ < searchPause) {
        return;
    }
    lastSearch_ = Clock::now();
    search_ = std::make_unique<ActiveFrameSearch>(*bus);
    connect(search_.get(), &ActiveFrameSearch::ended, this, [this](QList<ObjectReference> frames) {
        search_.release()->deleteLater();
        frames.removeIf([this](const ObjectReference &frame) { return left_.contains(frame); });
        // Some applications keep the state, so that more than one active frame says nothing.
        if (frames.size() == 1 && front_ && !front_->isActive && candidates_.isEmpty()) {
            consider(frames.constFirst(), front_->since);
        }
    });
}

QDBusPendingCall ActiveFrames::ask(const ObjectReference &object, const char *interface,
                                   const char *method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(
        object.service, object.path, QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    const auto bus = bus_.connection();
    return bus ? bus->asyncCall(message, replyTimeoutMs)
               : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, QString()));
}

QDBusPendingCall ActiveFrames::askName(const ObjectReference &frame)
{
    return ask(Atspi::rootOf(frame.service), Atspi::properties, "Get",
               {QString::fromLatin1(Atspi::accessible), QStringLiteral("Name")});
}

void ActiveFrames::consider(const ObjectReference &object, Clock::time_point since, int attempt)
{
    candidates_.removeIf([&](const Candidate &candidate) { return candidate.object == object; });
    candidates_.append(Candidate{object, since, ask(object, Atspi::accessible, "GetRole"),
                                 ask(Atspi::busDaemon(), Atspi::busInterface,
                                     "GetConnectionUnixProcessID", {object.service}),
                                 askName(object), attempt, false});
    auto *watcher = new QDBusPendingCallWatcher(candidates_.constLast().name, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, object] {
        watcher->deleteLater();
        settle(object);
    });
}

/// Ends the wait for the candidate's answers. Blocks until they are there.
void ActiveFrames::settle(const ObjectReference &object)
{
    const auto found = std::ranges::find(candidates_, object, &Candidate::object);
    if (found != candidates_.end()) {
        const Candidate candidate = *found;
        candidates_.erase(found);
        take(candidate);
    }
}

/// Takes the candidate as the window in front if it is a window of an application.
void ActiveFrames::take(const Candidate &candidate)
{
    const QDBusReply<quint32> process = QDBusPendingCall(candidate.process);
    if (process.value() == QCoreApplication::applicationPid()) {
        return; // before waiting for an answer of this process
    }
    const QDBusReply<quint32> role = QDBusPendingCall(candidate.role);
    const bool isUnanswered =
        process.error().type() == QDBusError::NoReply || role.error().type() == QDBusError::NoReply;
    if (isUnanswered && candidate.attempt < maxQuestions) {
        // An application that starts or loads is busy. Until it answers, it is not known.
        leave(frame_);
        candidates_.append(candidate);
        candidates_.last().isPaused = true;
        QTimer::singleShot(attemptPause * (1 << candidate.attempt), this, [this, candidate] {
            const auto waiting =
                std::ranges::find(candidates_, candidate.object, &Candidate::object);
            if (waiting != candidates_.end()) {
                consider(candidate.object, candidate.since, candidate.attempt + 1);
            }
        });
        return;
    }
    if (!process.isValid() || !role.isValid()
        || !isWindowRole(static_cast<Atspi::Role>(role.value()))) {
        return;
    }
    if (front_ && front_->isActive && candidate.since < front_->since) {
        return; // another one has come to the front meanwhile
    }
    if (isOfDesktop_(process.value())) {
        leave(frame_);
        return;
    }
    const QDBusReply<QVariant> name = QDBusPendingCall(candidate.name);
    frame_ = candidate.object;
    front_ = FrontWindow{.processIdentifier = process.value(),
                         .applicationId = {},
                         .applicationName = name.value().toString(),
                         .since = candidate.since,
                         .isActive = true};
    if (const auto bus = bus_.connection()) { // an application that crashes reports nothing
        frontService_.emplace(frame_.service, *bus, QDBusServiceWatcher::WatchForUnregistration);
        connect(&*frontService_, &QDBusServiceWatcher::serviceUnregistered, this,
                [this] { leave(frame_); });
    }
    if (name.error().type() == QDBusError::NoReply) {
        askNameAgain(candidate.attempt);
    }
    Q_EMIT changed();
}

void ActiveFrames::askNameAgain(int attempt)
{
    if (attempt == maxQuestions) {
        return;
    }
    const auto isInFront = [this, frame = frame_] {
        return front_ && front_->isActive && frame_ == frame;
    };
    QTimer::singleShot(attemptPause * (1 << attempt), this, [this, attempt, isInFront] {
        if (!isInFront()) {
            return;
        }
        auto *watcher = new QDBusPendingCallWatcher(askName(frame_), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [this, watcher, attempt, isInFront] {
                    watcher->deleteLater();
                    const QDBusReply<QVariant> name = *watcher;
                    if (!isInFront()) {
                        return;
                    }
                    if (name.error().type() == QDBusError::NoReply) {
                        askNameAgain(attempt + 1);
                    } else if (name.isValid()) {
                        front_->applicationName = name.value().toString();
                        Q_EMIT changed();
                    }
                });
    });
}

void ActiveFrames::leave(const ObjectReference &object)
{
    candidates_.removeIf([&](const Candidate &candidate) { return candidate.object == object; });
    if (front_ && front_->isActive && frame_ == object) {
        setInactive();
    }
}

void ActiveFrames::onStateChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    const auto bus = bus_.connection();
    if (arguments.size() < 2 || arguments.at(0).toString() != u"active" || !bus
        || message.service() == bus->baseService()) {
        return;
    }
    const ObjectReference object{message.service(), message.path()};
    left_.removeOne(object);
    if (arguments.at(1).toInt() == 0) {
        left_.append(object);
        if (left_.size() > maxLeft) {
            left_.removeFirst();
        }
        leave(object);
    } else if (!front_ || !front_->isActive || frame_ != object) {
        consider(object, Clock::now());
    }
}

std::optional<FrontWindow> ActiveFrames::frontWindow()
{
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall); // events that have arrived
    const QList<Candidate> candidates = candidates_;
    for (const Candidate &candidate : candidates) {
        if (!candidate.isPaused) {
            settle(candidate.object);
        }
    }
    searchUnlessKnown();
    return front_;
}

std::optional<QString> ActiveFrames::windowTitle(qint64 processIdentifier)
{
    const auto bus = bus_.connection();
    if (!bus || !front_ || !front_->isActive || front_->processIdentifier != processIdentifier) {
        return std::nullopt;
    }
    AtspiQuestion question(*bus, unresponsive_, QDeadlineTimer(titleTime));
    return question.sendGetProperty(frame_, Atspi::accessible, "Name").property<QString>();
}

} // namespace vellumo
