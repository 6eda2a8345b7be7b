// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/Conversation.h"

namespace vellumo {

QList<FollowUpExchange> Conversation::followUps() const
{
    QList<FollowUpExchange> exchanges;
    for (qsizetype i = 2; i + 1 < transcript.size(); i += 2) {
        if (isPair(i)) {
            exchanges.append(
                {QUuid::createUuid(), transcript.at(i).text, transcript.at(i + 1).text});
        }
    }
    return exchanges;
}

bool Conversation::keepsLatest() const
{
    const qsizetype question = transcript.size() - 2;
    return question >= 2 && question % 2 == 0 && isPair(question);
}

bool Conversation::isPair(qsizetype position) const
{
    return transcript.at(position).role == ChatTurn::Role::user
        && transcript.at(position + 1).role == ChatTurn::Role::assistant;
}

} // namespace vellumo
