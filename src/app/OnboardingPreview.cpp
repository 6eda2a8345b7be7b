// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/OnboardingPreview.h"

#include "platform/Clock.h"
#include "platform/Diagnostics.h"

#include <QDir>
#include <array>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto cardSettleTime = 400ms; // longer than any animation
constexpr std::array names{u"signin", u"privacy",   u"permission", u"keytest", u"select",
                           u"notes",  u"hearabout", u"role",       u"industry"};

OnboardingWindowController::Collaborators
withTexts(const OnboardingWindowController::Collaborators &with, BilingualText &texts)
{
    return {with.defaults, with.auth, with.accessibility, with.events, with.clock,
            with.engine,   texts};
}

} // namespace

OnboardingPreview::OnboardingPreview(const OnboardingWindowController::Collaborators &collaborators)
    : clock_(collaborators.clock)
    , cards_(withTexts(collaborators, texts_))
{
}

void OnboardingPreview::writeSnapshots(const QString &folder, std::function<void()> done)
{
    QDir().mkpath(folder);
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
    clock_.after(cardSettleTime, this, [this, number, name, folder, done = std::move(done)] {
        const QString path =
            u"%1/onboarding-%2-%3.png"_s.arg(folder, name, english_ ? u"en" : u"zh");
        if (cards_.window() == nullptr || !cards_.window()->grabWindow().save(path)) {
            printDiagnostic(u"could not write a picture"_s);
        }
        writeCard(number + 1, folder, done);
    });
}

} // namespace vellumo
