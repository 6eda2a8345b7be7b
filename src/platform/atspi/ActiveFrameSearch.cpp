// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/ActiveFrameSearch.h"

#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <utility>

namespace vellumo {
namespace {

constexpr int searchTimeoutMs = 300;
constexpr qsizetype maxSearched = 256;
constexpr qsizetype maxSearchedFrames = 64;

} // namespace

ActiveFrameSearch::ActiveFrameSearch(QDBusConnection bus) : bus_(std::move(bus))
{
    registerAtspiTypes();
    ask(Atspi::rootOf(Atspi::registryService()), "GetChildren",
        [this](const QDBusMessage &answer) { onApplications(answer); });
}

void ActiveFrameSearch::ask(const ObjectReference &object, const char *method,
                            const Answered &answered)
{
    const auto message = QDBusMessage::createMethodCall(object.service, object.path,
                                                        QString::fromLatin1(Atspi::accessible),
                                                        QString::fromLatin1(method));
    ++awaited_;
    auto *watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, searchTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            answered(watcher->reply());
        }
        if (--awaited_ == 0) {
            Q_EMIT ended(found_);
        }
    });
}

void ActiveFrameSearch::onApplications(const QDBusMessage &answer)
{
    const QDBusReply<QList<ObjectReference>> applications(answer);
    for (const ObjectReference &application : applications.value().mid(0, maxSearched)) {
        ask(application, "GetChildren", [this](const QDBusMessage &frames) { onFrames(frames); });
    }
}

void ActiveFrameSearch::onFrames(const QDBusMessage &answer)
{
    const QDBusReply<QList<ObjectReference>> frames(answer);
    for (const ObjectReference &frame : frames.value().mid(0, maxSearchedFrames)) {
        if (frame.service != answer.service()) {
            continue; // an application cannot speak for another
        }
        ask(frame, "GetState", [this, frame](const QDBusMessage &state) {
            const QDBusReply<Atspi::StateSet> states(state);
            if (Atspi::hasState(states.value(), Atspi::State::Active)) {
                found_.append(frame);
            }
        });
    }
}

} // namespace vellumo
