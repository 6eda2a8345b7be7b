// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/KeyedService.h"

#include <QPointer>

namespace vellumo {

void KeyedService::explain(const ExplanationRequest &request, QObject *context,
                           ExplanationCompletion<ExplanationResult> completion)
{
    source_(context,
            [request, context = QPointer(context),
             completion = std::move(completion)](const Ready &ready) {
                if (ready.isOk()) {
                    OpenAIService(ready.value()).explain(request, context, completion);
                } else {
                    completion(withoutKey(ready.error()));
                }
            });
}

void KeyedService::followUp(const QList<ChatTurn> &transcript, const QString &language,
                            QObject *context, ExplanationCompletion<QString> completion)
{
    source_(
        context,
        [transcript, language, context = QPointer(context),
         completion = std::move(completion)](const Ready &ready) {
            if (ready.isOk()) {
                OpenAIService(ready.value()).followUp(transcript, language, context, completion);
            } else {
                completion(withoutKey(ready.error()));
            }
        });
}

} // namespace vellumo
