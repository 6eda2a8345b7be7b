// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

class DefaultsStore;
class KeychainStore;

/// The session as the keyring has it. A sign-out is recorded in the settings until the keyring has
/// nothing of the session any more, since it may be closed at that time.
///
/// The keyring reports no failure of a write: it is asked again, whenever it may have become
/// readable. Main thread only.
class StoredSession : public QObject {
    Q_OBJECT

public:
    struct Contents {
        QString refreshToken;
        QString uid;
        QString email;
    };
    using Completion = std::function<void(const std::optional<Contents> &)>;
    /// Returns the refresh token that the keyring should have; absent when it should have none.
    using Expected = std::function<std::optional<QString>()>;

    /// Both must outlive this object.
    StoredSession(KeychainStore &keychain, DefaultsStore &defaults, Expected expected,
                  QObject *parent = nullptr);

    /// Reads the session; absent unless it is complete. The completion never runs after this object
    /// is destroyed.
    void read(const Completion &completion);
    void store(const Contents &contents);
    /// Replaces the refresh token alone.
    void renew(const QString &refreshToken);
    void remove();
    /// Records that the session is to be removed, also in a later run.
    void recordSignOut();

    /// Returns whether the record of a sign-out is still there.
    [[nodiscard]] bool isSignOutPending() const;
    /// Clears the record of a sign-out once the keyring has what is expected.
    void confirm();

private:
    KeychainStore &keychain_;
    DefaultsStore &defaults_;
    Expected expected_;
    int change_ = 0; ///< counts store() and remove()
};

} // namespace vellumo
