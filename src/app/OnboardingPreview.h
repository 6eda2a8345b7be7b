// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "onboarding/OnboardingWindowController.h"
#include "ui/BilingualText.h"

namespace vellumo {

/// For developers: pictures of every card of the first run in both languages, beside the real
/// window and unconnected to anything.
class OnboardingPreview : public QObject {
    Q_OBJECT

public:
    /// All must outlive the preview; `collaborators.texts` is not used.
    explicit OnboardingPreview(const OnboardingWindowController::Collaborators &collaborators);

    /// Writes the pictures into the folder, then calls `done`.
    void writeSnapshots(const QString &folder, std::function<void()> done);

private:
    void writeCard(int number, const QString &folder, std::function<void()> done);

    Clock &clock_;
    bool english_ = true;
    BilingualText texts_{
        [this] { return english_ ? QStringLiteral("English") : QStringLiteral("Chinese"); }};
    OnboardingWindowController cards_;
};

} // namespace vellumo
