// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QString>
#include <optional>
#include <variant>

namespace vellumo {

/// The service answered, but not with an answer.
struct ServiceError {
    enum class Kind : quint8 {
        badStatus, ///< a status outside 200-299
        malformedPayload, ///< the model's reply is not an explanation payload
        emptyResponse, ///< no choice, or nothing in the first
    };
    Kind kind = Kind::badStatus;
    int status = 0; ///< of badStatus
    /// The body of badStatus, "<no body>" when it is no text; the reply of malformedPayload as it
    /// came. May repeat what was sent: never logged.
    QString text = {};
    friend bool operator==(const ServiceError &, const ServiceError &) = default;
};

/// The service's answer does not have the form of one.
struct DecodingError {
    friend bool operator==(const DecodingError &, const DecodingError &) = default;
};

/// The key for the service is not at hand, so that nothing was sent.
struct KeyError {
    enum class Kind : quint8 {
        late, ///< the keyring has not answered yet
        locked, ///< the keyring is closed
        missing, ///< the keyring has no key for the service's address
        unavailable, ///< there is no keyring
    };
    Kind kind = Kind::missing;
    friend bool operator==(const KeyError &, const KeyError &) = default;
};

/// Why there is no explanation. Carries no text for the user; the view chooses the words.
using ExplanationError = std::variant<ServiceError, DecodingError, HttpError, KeyError>;

// Made inline, gcc 12 sees uninitialised members of the other kinds.
[[nodiscard]] ExplanationError undecodable(); ///< a DecodingError
[[nodiscard]] ExplanationError withoutKey(const KeyError &error);

/// What may be kept, shown and logged of an error: nothing that was sent or answered.
struct ExplanationFailure {
    std::variant<ServiceError::Kind, DecodingError, HttpError::Kind, KeyError::Kind> kind =
        HttpError::Kind::other;
    int status = 0; ///< of badStatus
    double at = 0; ///< seconds since the reference date
    friend bool operator==(const ExplanationFailure &, const ExplanationFailure &) = default;
};

[[nodiscard]] ExplanationFailure summary(const ExplanationError &error, double at);

/// Whether another address, model or key may help, rather than time.
[[nodiscard]] bool isMatterOfSettings(const ExplanationError &error);

/// "status 429", "timed out" and the like, for a log.
[[nodiscard]] QString describe(const ExplanationFailure &failure);

} // namespace vellumo
