// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class AuthService;
class BilingualText;
class SyncReporting;

/// Who is signed in and how the notes of the account are synced, in words.
class AccountStatus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString account READ account NOTIFY changed)
    Q_PROPERTY(bool syncs READ syncs NOTIFY changed)
    Q_PROPERTY(Light light READ light NOTIFY changed)
    Q_PROPERTY(QString syncText READ syncText NOTIFY changed)
    Q_PROPERTY(QString uploadText READ uploadText NOTIFY changed)
    Q_PROPERTY(QString advice READ advice NOTIFY changed)

public:
    enum class Light : quint8 { Neutral, Good, Trouble };
    Q_ENUM(Light)

    /// All must outlive the status; `sync` is null where nothing is synced.
    AccountStatus(AuthService &auth, SyncReporting *sync, BilingualText &texts,
                  QObject *parent = nullptr);

    /// The address of the account, or where notes stay without one.
    [[nodiscard]] QString account() const;
    /// Whether someone is signed in and notes are synced.
    [[nodiscard]] bool syncs() const;
    [[nodiscard]] Light light() const;
    /// How far the sync is, or what keeps it; empty while nothing is synced.
    [[nodiscard]] QString syncText() const;
    /// The question whether to upload the pending notes to this account.
    [[nodiscard]] QString uploadText() const;
    /// What to do about the sync's problem; empty without one.
    [[nodiscard]] QString advice() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QString countText(int count, const QString &one, const QString &many,
                                    const QString &chinese) const;
    [[nodiscard]] QString upToDateText() const;
    [[nodiscard]] QString problemText() const;

    AuthService &auth_;
    SyncReporting *sync_;
    BilingualText &texts_;
};

} // namespace vellumo
