// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Text with embedded objects of an application that gives arbitrary answers.

#include "Fuzzing.h"
#include "platform/atspi/EmbeddedText.h"
#include "platform/atspi/UnresponsiveServices.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <fuzzer/FuzzedDataProvider.h>

using namespace vellumo;
using namespace vellumo::fuzzing;

namespace {

FuzzedDataProvider *answers = nullptr;

QString someText()
{
    QString result;
    const int length = answers->ConsumeIntegralInRange(0, 12);
    for (int i = 0; i < length; ++i) {
        switch (answers->ConsumeIntegralInRange(0, 7)) {
        case 0:
        case 1:
            result += QChar(u'\uFFFC');
            break;
        case 2:
            result += QStringLiteral("\U0001F600");
            break;
        case 3:
            result += QChar(answers->ConsumeIntegral<quint16>());
            break;
        default:
            result += u'a';
        }
    }
    return result;
}

QVariantList answerTo(const QString &method)
{
    if (method == QLatin1String("GetText")) {
        return {someText()};
    }
    if (method == QLatin1String("GetObject")) {
        return {QVariant::fromValue(ObjectReference{
            QStringLiteral(":1.2"),
            QStringLiteral("/") + QString::number(answers->ConsumeIntegral<quint8>())})};
    }
    if (method == QLatin1String("GetRole")) {
        return {quint32{answers->ConsumeIntegral<quint8>()}};
    }
    if (method == QLatin1String("GetSelection")) {
        return {answers->ConsumeIntegralInRange(-2, 20), answers->ConsumeIntegralInRange(-2, 20)};
    }
    if (method == QLatin1String("GetNSelections")) {
        return {answers->ConsumeIntegralInRange(-1, 3)};
    }
    return {answers->ConsumeIntegralInRange(-2, 200)};
}

} // namespace

/// Replaces the bus. Answers every call at once, sometimes with an error or a wrong
/// type.
QDBusPendingCall QDBusConnection::asyncCall(const QDBusMessage &message, int /*timeout*/) const
{
    const auto manner = answers->ConsumeIntegral<quint8>();
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral(":1.2"), QStringLiteral("/"), message.interface(), message.member());
    if (manner == 1) {
        return QDBusPendingCall::fromCompletedCall(
            call.createErrorReply(QDBusError::UnknownMethod, {}));
    }
    if (manner == 2) {
        return QDBusPendingCall::fromCompletedCall(
            call.createReply(QVariantList{QStringLiteral("x")}));
    }
    if (manner == 3) {
        return QDBusPendingCall::fromCompletedCall(call.createErrorReply(QDBusError::NoReply, {}));
    }
    return QDBusPendingCall::fromCompletedCall(call.createReply(answerTo(message.member())));
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider provider(data, size);
    answers = &provider;
    UnresponsiveServices unresponsive;
    AtspiQuestion question(QDBusConnection(QStringLiteral("none")), unresponsive,
                           QDeadlineTimer(QDeadlineTimer::Forever));
    const int start = provider.ConsumeIntegralInRange(0, 10);
    const auto quality =
        provider.ConsumeBool() ? OffsetQuality::WrongAfterAstral : OffsetQuality::Exact;
    const auto read = embeddedText({QStringLiteral(":1.2"), QStringLiteral("/0")},
                                   {{start, start + 12}}, quality, question);
    require(!read || !question.isAborted(), "what was given up has no text");
    require(!read || (!read->contains(QChar(u'\uFFFC')) && !read->contains(QChar(u'\uFEFF'))),
            "fillers are removed");
    return 0;
}
