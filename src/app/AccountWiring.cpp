// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AccountWiring.h"

#include "platform/Diagnostics.h"
#include "settings/AppConfig.h"
#include "settings/ConfigurationKeys.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
const QString defaultSite = u"https://vellumo.app"_s;
}

AccountWiring::AccountWiring(const Collaborators &with)
    : keychain_(with.secrets)
    , browser_(with.workspace, with.config.value(configuration::siteUrl).value_or(defaultSite))
    , auth_({.keychain = keychain_,
             .browser = browser_,
             .session = with.http,
             .clock = with.clock,
             .texts = with.texts,
             .defaults = with.defaults,
             .lookup = [&config = with.config](const QString &key) { return config.value(key); }})
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
