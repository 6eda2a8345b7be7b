// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiQuestion.h"

#include "platform/atspi/UnresponsiveServices.h"
#include <QDBusError>
#include <algorithm>

namespace vellumo {

PendingAnswer::PendingAnswer(AtspiQuestion &question, QString service, const QDBusPendingCall &call)
    : question_(&question)
    , service_(std::move(service))
    , call_(call)
{
}

QVariantList PendingAnswer::wait()
{
    if (question_->isAborted()) {
        return {};
    }
    call_.waitForFinished();
    const QDBusMessage reply = call_.reply();
    if (call_.isError()) {
        question_->examineFailure(service_, reply);
        return {};
    }
    question_->sinceLastReply_.restart();
    return reply.arguments();
}

std::optional<ObjectReference> PendingAnswer::objectOfAnyService()
{
    const QVariantList arguments = wait();
    const auto argument = arguments.value(0).value<QDBusArgument>();
    return argument.currentSignature() == signatureOf<ObjectReference>()
        ? std::optional(qdbus_cast<ObjectReference>(argument))
        : std::nullopt;
}

QList<ObjectReference> PendingAnswer::objectsIn(const QDBusArgument &argument) const
{
    QList<ObjectReference> objects;
    argument.beginArray();
    while (!argument.atEnd() && objects.size() < maxObjects) {
        ObjectReference object;
        argument >> object;
        object = own(std::move(object));
        if (!object.service.isEmpty()) {
            objects.append(std::move(object));
        }
    }
    argument.endArray(); // frees the array's reader and thereby the message
    return objects;
}

/// Drops objects of other services, whose processes are not in front.
ObjectReference PendingAnswer::own(ObjectReference object) const
{
    const bool mayName = object.service == service_ || service_ == Atspi::registryService();
    return mayName ? std::move(object) : ObjectReference();
}

AtspiQuestion::AtspiQuestion(QDBusConnection bus, UnresponsiveServices &unresponsive,
                             QDeadlineTimer deadline)
    : bus_(std::move(bus))
    , unresponsive_(unresponsive)
    , deadline_(deadline)
{
    sinceLastReply_.start();
}

PendingAnswer AtspiQuestion::send(const ObjectReference &object, const char *interface,
                                  const char *method, const QVariantList &arguments)
{
    const qint64 remaining = deadline_.remainingTime();
    if (remaining == 0 || unresponsive_.contains(object.service)) {
        aborted_ = true;
    }
    if (aborted_) {
        return {*this, object.service,
                QDBusPendingCall::fromError(QDBusError(QDBusError::NoReply, QString()))};
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        object.service, object.path, QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    message.setAutoStartService(false);
    ++callCount_;
    // even without a deadline one call must not hang
    constexpr qint64 maxCallMs = 2000;
    const auto timeoutMs =
        static_cast<int>(remaining < 0 ? maxCallMs : std::min(remaining, maxCallMs));
    return {*this, object.service, bus_.asyncCall(message, timeoutMs)};
}

PendingAnswer AtspiQuestion::sendGetProperty(const ObjectReference &object, const char *interface,
                                             const char *property)
{
    return send(object, Atspi::properties, "Get",
                {QString::fromLatin1(interface), QString::fromLatin1(property)});
}

bool AtspiQuestion::isSilent(const QString &service) const
{
    return unresponsive_.contains(service);
}

void AtspiQuestion::examineFailure(const QString &service, const QDBusMessage &reply)
{
    const QDBusError error(reply);
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        unresponsive_.noteTimeout(service, std::chrono::milliseconds(sinceLastReply_.elapsed()));
        aborted_ = true;
        break;
    case QDBusError::Disconnected:
        aborted_ = true;
        break;
    case QDBusError::ServiceUnknown:
        lostService_ = true;
        break;
    default:
        sinceLastReply_.restart(); // an error is an answer as well
        break;
    }
}

} // namespace vellumo
