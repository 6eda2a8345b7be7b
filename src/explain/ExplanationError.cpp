// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationError.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

ExplanationFailure::Kind kindOf(ServiceError::Kind kind)
{
    switch (kind) {
    case ServiceError::Kind::badStatus:
        return ExplanationFailure::Kind::badStatus;
    case ServiceError::Kind::malformedPayload:
        return ExplanationFailure::Kind::malformedPayload;
    case ServiceError::Kind::emptyResponse:
        return ExplanationFailure::Kind::emptyResponse;
    }
    Q_UNREACHABLE();
}

} // namespace

ExplanationError undecodable()
{
    return DecodingError{};
}

ExplanationFailure summary(const ExplanationError &error, double at)
{
    if (const auto *service = std::get_if<ServiceError>(&error)) {
        return {.kind = kindOf(service->kind), .status = service->status, .at = at};
    }
    if (const auto *network = std::get_if<HttpError>(&error)) {
        return {.kind = ExplanationFailure::Kind::network, .network = network->kind, .at = at};
    }
    return {.kind = ExplanationFailure::Kind::undecodable, .at = at};
}

QString describe(const ExplanationFailure &failure)
{
    switch (failure.kind) {
    case ExplanationFailure::Kind::badStatus:
        return u"status %1"_s.arg(failure.status);
    case ExplanationFailure::Kind::malformedPayload:
        return u"reply is not an explanation"_s;
    case ExplanationFailure::Kind::emptyResponse:
        return u"empty reply"_s;
    case ExplanationFailure::Kind::undecodable:
        return u"answer cannot be read"_s;
    case ExplanationFailure::Kind::network:
        return describe(failure.network);
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
