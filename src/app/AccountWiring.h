// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "explain/OpenAIService.h"

namespace vellumo {

class AppConfig;
class DefaultsStore;
class SecretItems;

/// Builds the user's session and what it depends on.
class AccountWiring {
public:
    /// All must outlive this object.
    struct Collaborators {
        const AppConfig &config;
        SecretItems &secrets;
        Workspace &workspace;
        HttpSession &http;
        Clock &clock;
        const BilingualText &texts;
        DefaultsStore &defaults;
    };

    explicit AccountWiring(const Collaborators &with);

    [[nodiscard]] AuthService &auth() { return auth_; }

    /// Takes the callback address of the web site's login page, unchanged.
    void handleCallback(const QString &url) { browser_.handleCallback(url); }

    /// Returns the provider of the ID token for explanations; it yields none once this object is
    /// destroyed.
    [[nodiscard]] OpenAIService::TokenProvider tokenProvider();

private:
    KeychainStore keychain_;
    GoogleOAuth browser_;
    AuthService auth_;
};

} // namespace vellumo
