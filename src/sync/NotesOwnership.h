// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <optional>

namespace vellumo {

class Authenticating;
class DefaultsStore;
class NotesStoring;

/// Remembers which account the notes on this computer belong to, so that notes of one account, or
/// made without one, are not uploaded to another before the user has agreed. Main thread only.
class NotesOwnership final : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        DefaultsStore &defaults;
        const Authenticating &auth;
        const NotesStoring &store;
    };

    explicit NotesOwnership(const Collaborators &collaborators) : with_(collaborators) { }

    /// Whether notes may be exchanged with the account that is signed in. Without notes to upload
    /// they may, and the account is recorded as their owner.
    [[nodiscard]] bool allowsSync();

    /// Whether allowsSync() has refused the account that is signed in, and nothing has changed
    /// since.
    [[nodiscard]] bool isWithheld() const;
    /// The same, and the user has not been asked about this account.
    [[nodiscard]] bool isUnanswered() const;

    /// Records the account that is signed in as the owner.
    void agree();
    /// Records that this account does not get the notes. It is not asked about again.
    void decline();

Q_SIGNALS:
    /// isWithheld() or isUnanswered() may have changed.
    void changed();

private:
    void withhold(const std::optional<QString> &uid);

    Collaborators with_;
    std::optional<QString> withheld_; ///< uid that was refused last
};

} // namespace vellumo
