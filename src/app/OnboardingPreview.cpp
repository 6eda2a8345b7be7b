// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/OnboardingPreview.h"

#include "app/Snapshot.h"
#include "platform/Clock.h"

#include <array>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr std::array names{u"signin", u"privacy",   u"permission", u"keytest", u"select",
                           u"notes",  u"hearabout", u"role",       u"industry"};

OnboardingWindowController::Collaborators
withTexts(const OnboardingWindowController::Collaborators &with, BilingualText &texts)
{
    return {.defaults = with.defaults,
            .auth = with.auth,
            .accessibility = with.accessibility,
            .events = with.events,
            .clock = with.clock,
            .engine = with.engine,
            .texts = texts,
            .keyboardFace = with.keyboardFace};
}

} // namespace

OnboardingPreview::OnboardingPreview(const OnboardingWindowController::Collaborators &collaborators)
    : clock_(collaborators.clock)
    , cards_(withTexts(collaborators, texts_))
{
}

void OnboardingPreview::writeSnapshots(const QString &folder, std::function<void()> done)
{
    writeCard(0, folder, std::move(done));
}

void OnboardingPreview::writeCard(int number, const QString &folder, std::function<void()> done)
{
    const int count = static_cast<int>(names.size());
    if (number == 2 * count) {
        done();
        return;
    }
    english_ = number < count;
    texts_.refresh();
    const QString name = QString::fromUtf16(names[static_cast<size_t>(number % count)]);
    cards_.present(name);
    clock_.after(snapshotDelay, this, [this, number, name, folder, done = std::move(done)] {
        writeSnapshot(cards_.window(), folder, u"onboarding-"_s + name, english_);
        writeCard(number + 1, folder, done);
    });
}

} // namespace vellumo
