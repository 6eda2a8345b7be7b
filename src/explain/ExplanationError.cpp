// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationError.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QString describe(ServiceError::Kind kind, int status)
{
    switch (kind) {
    case ServiceError::Kind::badStatus:
        return u"status %1"_s.arg(status);
    case ServiceError::Kind::malformedPayload:
        return u"reply is not an explanation"_s;
    case ServiceError::Kind::emptyResponse:
        return u"empty reply"_s;
    }
    Q_UNREACHABLE();
}

QString describe(KeyError::Kind kind)
{
    switch (kind) {
    case KeyError::Kind::Late:
        return u"the keyring has not given the key yet"_s;
    case KeyError::Kind::Locked:
        return u"the keyring with the key is locked"_s;
    case KeyError::Kind::Missing:
        return u"no key for this service"_s;
    case KeyError::Kind::Unavailable:
        return u"no keyring to read the key from"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

ExplanationError undecodable()
{
    return DecodingError{};
}

ExplanationError withoutKey(const KeyError &error)
{
    return error;
}

ExplanationFailure summary(const ExplanationError &error, double at)
{
    if (const auto *service = std::get_if<ServiceError>(&error)) {
        return {.kind = service->kind, .status = service->status, .at = at};
    }
    if (const auto *network = std::get_if<HttpError>(&error)) {
        return {.kind = network->kind, .at = at};
    }
    if (const auto *key = std::get_if<KeyError>(&error)) {
        return {.kind = key->kind, .at = at};
    }
    return {.kind = DecodingError{}, .at = at};
}

bool isMatterOfSettings(const ExplanationError &error)
{
    const ExplanationFailure failure = summary(error, 0);
    if (const auto *service = std::get_if<ServiceError::Kind>(&failure.kind)) {
        constexpr int firstServerError = 500;
        constexpr int tooManyRequests = 429;
        return *service != ServiceError::Kind::badStatus
            || (failure.status < firstServerError && failure.status != tooManyRequests);
    }
    if (const auto *network = std::get_if<HttpError::Kind>(&failure.kind)) {
        using Kind = HttpError::Kind;
        return *network == Kind::Insecure || *network == Kind::NoAddress
            || *network == Kind::Unsendable || *network == Kind::CannotResolve
            || *network == Kind::Refused;
    }
    const auto *key = std::get_if<KeyError::Kind>(&failure.kind);
    return !key || *key != KeyError::Kind::Late;
}

QString describe(const ExplanationFailure &failure)
{
    if (const auto *service = std::get_if<ServiceError::Kind>(&failure.kind)) {
        return describe(*service, failure.status);
    }
    if (const auto *network = std::get_if<HttpError::Kind>(&failure.kind)) {
        return describe(*network);
    }
    if (const auto *key = std::get_if<KeyError::Kind>(&failure.kind)) {
        return describe(*key);
    }
    return u"answer cannot be read"_s;
}

} // namespace vellumo
