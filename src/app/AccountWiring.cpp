// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AccountWiring.h"

#include "app/AppConfig.h"
#include "platform/Diagnostics.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
const QString defaultSite = u"https://vellumo.app"_s;
}

AccountWiring::AccountWiring(const Foundation &foundation)
    : keychain_(foundation.secrets)
    , browser_(foundation.workspace,
               foundation.config.value(u"VELLUMO_SITE_URL"_s).value_or(defaultSite))
    , auth_({keychain_, browser_, foundation.http, foundation.clock, foundation.texts,
             foundation.defaults,
             [&config = foundation.config](const QString &key) { return config.value(key); }})
{
}

OpenAIService::TokenProvider AccountWiring::tokenProvider()
{
    return [auth = QPointer<AuthService>(&auth_)](QObject *context,
                                                  OpenAIService::TokenCompletion completion) {
        if (!auth) {
            QMetaObject::invokeMethod(
                context, [completion = std::move(completion)] { completion(std::nullopt); },
                Qt::QueuedConnection);
            return;
        }
        auth->idToken(context, [completion = std::move(completion)](const auto &answer) {
            if (!answer.isOk()) {
                printDiagnostic(u"no ID token: "_s + summary(answer.error()));
            }
            completion(answer.isOk() ? answer.value() : std::nullopt);
        });
    };
}

} // namespace vellumo
