// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QString>
#include <optional>
#include <variant>

namespace vellumo {

/// The service answered with an error or an unusable reply.
struct ServiceError {
    enum class Kind : quint8 {
        badStatus, ///< a status outside 200-299
        malformedPayload, ///< the model's reply is not an explanation payload
        emptyResponse, ///< no choice, or an empty first one
    };
    Kind kind = Kind::badStatus;
    int status = 0; ///< of badStatus
    /// The body for badStatus, "<no body>" if it is not text; the unchanged reply for
    /// malformedPayload. May repeat what was sent and must never be logged.
    QString text = {};
    friend bool operator==(const ServiceError &, const ServiceError &) = default;
};

/// The service's answer cannot be decoded.
struct DecodingError {
    friend bool operator==(const DecodingError &, const DecodingError &) = default;
};

/// The key for the service is not available, so that nothing was sent.
struct KeyError {
    enum class Kind : quint8 {
        Late, ///< the keyring has not answered yet
        Locked, ///< the keyring is closed
        Missing, ///< the keyring has no key for the service's address
        Unavailable, ///< there is no keyring
    };
    Kind kind = Kind::Missing;
    friend bool operator==(const KeyError &, const KeyError &) = default;
};

/// Why there is no explanation. Has no text for the user; the view chooses it.
using ExplanationError = std::variant<ServiceError, DecodingError, HttpError, KeyError>;

// Made inline, gcc 12 sees uninitialised members of the other kinds.
[[nodiscard]] ExplanationError undecodable(); ///< a DecodingError
[[nodiscard]] ExplanationError withoutKey(const KeyError &error);

/// The part of an error that may be kept, shown and logged. Has nothing that was sent or received.
struct ExplanationFailure {
    std::variant<ServiceError::Kind, DecodingError, HttpError::Kind, KeyError::Kind> kind =
        HttpError::Kind::Other;
    int status = 0; ///< of badStatus
    double at = 0; ///< seconds since the reference date
    friend bool operator==(const ExplanationFailure &, const ExplanationFailure &) = default;
};

[[nodiscard]] ExplanationFailure summary(const ExplanationError &error, double at);

/// Returns whether changing address, model or key may help.
[[nodiscard]] bool isMatterOfSettings(const ExplanationError &error);

/// Returns a description such as "status 429" or "timed out", for a log.
[[nodiscard]] QString describe(const ExplanationFailure &failure);

} // namespace vellumo
