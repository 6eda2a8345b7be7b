// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "http/HttpServer.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vellumo::test {

inline const QByteArray target = "/v1/chat/completions";

/// Returns what a chat-completions service sends when the model replies with this.
inline HttpAnswer modelSays(const QString &reply)
{
    using namespace Qt::StringLiterals;
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, reply}};
    const QJsonArray choices{QJsonObject{{u"message"_s, message}}};
    return {.body = QJsonDocument(QJsonObject{{u"choices"_s, choices}}).toJson()};
}

/// Returns the reply of a model that follows its instructions.
inline QString explanationOf(const QString &text)
{
    return QStringLiteral(R"({"intent": "x", "translation": "", "explanation": "%1"})").arg(text);
}

} // namespace vellumo::test
