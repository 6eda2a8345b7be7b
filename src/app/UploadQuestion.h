// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Alert.h"

namespace vellumo {

class Authenticating;
class BilingualText;
class NotesOwnership;
class SyncReporting;

/// Asks whether notes that were not made with the account that is signed in are to be uploaded to
/// it. The question is shown over a window that is shown, and waits until there is one.
class UploadQuestion final : public QObject {
    Q_OBJECT

public:
    /// All must outlive the question.
    struct Collaborators {
        QQmlEngine &engine;
        NotesOwnership &ownership;
        SyncReporting &sync;
        const Authenticating &auth;
        const BilingualText &texts;
    };

    explicit UploadQuestion(const Collaborators &with);

    /// Returns the window to ask over; null while none is shown.
    std::function<QWindow *()> window;

    /// Asks if there is something to ask, and withdraws a question that no longer applies. To be
    /// called when the window is shown.
    void update();

    /// The question's window, otherwise null.
    [[nodiscard]] QQuickWindow *shown() const { return alert_.window(); }

private:
    void ask();
    void takeAnswer(bool isAgreed);

    Collaborators with_;
    Alert alert_;
    QString askedFor_; ///< uid, while the question is shown
};

} // namespace vellumo
