// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <optional>
#include <type_traits>

namespace vellumo {

class UnresponsiveServices;
class AtspiQuestion;

/// A pending call. Send several before waiting for the first: an application answers in order, so
/// that independent calls cost one round trip together.
class PendingAnswer {
public:
    /// Blocks until the reply and returns its first value; absent if the call failed or the reply
    /// has another type. Lists of objects are limited to maxObjects, and objects of other services
    /// are removed unless the registry was asked.
    template <typename T> [[nodiscard]] std::optional<T> value()
    {
        const QVariantList arguments = wait();
        return arguments.isEmpty() ? std::nullopt : convert<T>(arguments.constFirst());
    }

    /// As value(), for an object of any service. The caller decides whether that service may be
    /// asked.
    [[nodiscard]] std::optional<ObjectReference> objectOfAnyService();

    static constexpr qsizetype maxObjects = 16384;

    /// Blocks until the reply to sendGetProperty() and returns the property; absent as for value().
    template <typename T> [[nodiscard]] std::optional<T> property()
    {
        const auto boxed = value<QDBusVariant>();
        return boxed ? convert<T>(boxed->variant()) : std::nullopt;
    }

    /// Blocks until the reply and returns all its values; empty if the call failed.
    [[nodiscard]] QVariantList wait();

private:
    friend class AtspiQuestion;
    PendingAnswer(AtspiQuestion &question, QString service, const QDBusPendingCall &call);

    template <typename T> [[nodiscard]] std::optional<T> convert(const QVariant &value) const
    {
        if (value.metaType() == QMetaType::fromType<T>()) {
            return value.value<T>();
        }
        if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
            return std::nullopt;
        }
        const auto argument = value.value<QDBusArgument>();
        if (argument.currentSignature() != signatureOf<T>()) {
            return std::nullopt;
        }
        if constexpr (std::is_same_v<T, QList<ObjectReference>>) {
            return objectsIn(argument);
        } else if constexpr (std::is_same_v<T, ObjectReference>) {
            return own(qdbus_cast<ObjectReference>(argument));
        } else {
            return qdbus_cast<T>(argument);
        }
    }

    [[nodiscard]] QList<ObjectReference> objectsIn(const QDBusArgument &argument) const;
    [[nodiscard]] ObjectReference own(ObjectReference object) const;

    template <typename T> static QString signatureOf()
    {
        return QString::fromLatin1(QDBusMetaType::typeToSignature(QMetaType::fromType<T>()));
    }

    AtspiQuestion *question_;
    QString service_;
    QDBusPendingCall call_;
};

/// One question to applications: any number of calls with one deadline. The first call without a
/// reply aborts the whole question. Blocks without an event loop. To be used on the stack.
class AtspiQuestion {
public:
    AtspiQuestion(QDBusConnection bus, UnresponsiveServices &unresponsive, QDeadlineTimer deadline);

    [[nodiscard]] PendingAnswer send(const ObjectReference &object, const char *interface,
                                     const char *method, const QVariantList &arguments = {});
    [[nodiscard]] PendingAnswer sendGetProperty(const ObjectReference &object,
                                                const char *interface, const char *property);

    /// Returns whether a call timed out. From then on every call fails at once, and a missing
    /// answer means "unknown".
    [[nodiscard]] bool isAborted() const { return aborted_; }

    /// Returns whether a call failed because its application has left the bus.
    [[nodiscard]] bool hasLostService() const { return lostService_; }

    /// Returns whether the application recently let a call time out, so that a call to it would
    /// abort the question.
    [[nodiscard]] bool isSilent(const QString &service) const;

    /// Returns how many calls were sent.
    [[nodiscard]] int callCount() const { return callCount_; }

private:
    friend class PendingAnswer;
    void examineFailure(const QString &service, const QDBusMessage &reply);

    QDBusConnection bus_;
    UnresponsiveServices &unresponsive_;
    QDeadlineTimer deadline_;
    QElapsedTimer sinceLastReply_;
    int callCount_ = 0;
    bool aborted_ = false;
    bool lostService_ = false;
};

} // namespace vellumo
