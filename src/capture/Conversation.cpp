// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/Conversation.h"

namespace vellumo {

QList<FollowUpExchange> Conversation::followUps() const
{
    QList<FollowUpExchange> exchanges;
    for (qsizetype i = 2; i + 1 < transcript.size(); i += 2) {
        const ChatTurn &question = transcript.at(i);
        const ChatTurn &answer = transcript.at(i + 1);
        if (question.role == ChatTurn::Role::user && answer.role == ChatTurn::Role::assistant) {
            exchanges.append({QUuid::createUuid(), question.text, answer.text});
        }
    }
    return exchanges;
}

} // namespace vellumo
