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

/// A call on its way. Many may be sent before the first is waited for; an application answers them
/// in order, so that independent calls cost one round trip together.
class PendingAnswer {
public:
    /// Waits for the reply. Absent if the call failed or was answered in another shape. Of a list
    /// of objects at most mostObjects; objects of another service than the asked one are left out,
    /// unless that is the registry.
    template <typename T> [[nodiscard]] std::optional<T> value()
    {
        const QVariantList arguments = wait();
        return arguments.isEmpty() ? std::nullopt : convert<T>(arguments.constFirst());
    }

    /// As value(), of whatever service the object is. Whether that may be asked is for the caller
    /// to find out.
    [[nodiscard]] std::optional<ObjectReference> objectOfAnyService();

    static constexpr qsizetype mostObjects = 16384;

    /// The value of a call of Properties.Get.
    template <typename T> [[nodiscard]] std::optional<T> property()
    {
        const auto boxed = value<QDBusVariant>();
        return boxed ? convert<T>(boxed->variant()) : std::nullopt;
    }

    /// All values of the reply; empty if the call failed.
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

/// One question to applications: any number of calls under one deadline, given up as a whole at the
/// first call without reply. Waits in blocking calls, without an event loop. Lives on the stack.
class AtspiQuestion {
public:
    AtspiQuestion(QDBusConnection bus, UnresponsiveServices &unresponsive, QDeadlineTimer deadline);

    [[nodiscard]] PendingAnswer send(const ObjectReference &object, const char *interface,
                                     const char *method, const QVariantList &arguments = {});
    [[nodiscard]] PendingAnswer sendGetProperty(const ObjectReference &object,
                                                const char *interface, const char *property);

    /// Whether a call ran into its time-out. From then on every call fails at once, and a missing
    /// answer means "unknown".
    [[nodiscard]] bool isAborted() const { return aborted_; }

    /// Whether a call failed because its application has left the bus.
    [[nodiscard]] bool hasLostService() const { return lostService_; }

    /// Whether the application has let a call time out just now, so that one to it would abort.
    [[nodiscard]] bool isSilent(const QString &service) const;

    /// How many calls were sent.
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
