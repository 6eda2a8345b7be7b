// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QPointer>

namespace vellumo {

/// Keeps every request until the test answers it.
class FakeHttpSession : public HttpSession {
public:
    bool isWarm = false;
    QList<HttpRequest> requests; ///< all that were sent, oldest first

    void send(const HttpRequest &request, QObject *context, HttpCompletion completion) override;
    void warmUp() override { isWarm = true; }

    /// Completes the oldest request that still waits; answers false when there is none. One whose
    /// context is gone counts as answered.
    bool answer(const Result<HttpResponse, HttpError> &result);

private:
    QList<std::pair<QPointer<QObject>, HttpCompletion>> waiting_;
};

} // namespace vellumo
