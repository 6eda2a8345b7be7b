// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// Why an exchange with the notes service failed, from the wire to the views.
namespace vellumo::SyncError {
Q_NAMESPACE
QML_ELEMENT

enum class Kind : quint8 {
    None, ///< it succeeded
    NotConfigured, ///< no backend is configured
    SignedOut, ///< there is no session, or it is not accepted any more
    Unreachable, ///< no answer came
    Untrusted, ///< no TLS connection, or an untrusted certificate
    AddressNotAllowed, ///< not sent: no web address, or http to a public host
    ListTooLarge, ///< the backend's list of notes exceeds the limit
    NoteTooLarge, ///< the backend accepts no note of that size
    Refused, ///< by the backend, or temporarily by the token service
    Unreadable, ///< the answer is malformed
};
Q_ENUM_NS(Kind)

} // namespace vellumo::SyncError
