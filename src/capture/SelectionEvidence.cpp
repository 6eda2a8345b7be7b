// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/SelectionEvidence.h"

using namespace std::chrono_literals;

namespace vellumo {

namespace {

using Kind = SelectedText::Kind;

/// Maximum delay between a browser's publication and its announcement through accessibility.
constexpr auto announcementDelay = 1s;

/// How long a text that was read before counts again without other evidence.
constexpr auto rereadTime = 30s;

/// Returns whether the publication belongs to a change of the selection announced at that time, or
/// is newer.
bool isOfChange(const Publication &publication, std::chrono::milliseconds sinceChange)
{
    return publication.age <= sinceChange + announcementDelay;
}

} // namespace

bool isStillSelected(const Publication &publication, const SelectionEvidence &evidence)
{
    if (publication.isOver) {
        return false;
    }
    if (evidence.answer == Kind::Nothing) {
        // Some viewers drop the selection when Alt is released; the earlier selection counts.
        const bool isDroppedByTap = !evidence.isEditable && evidence.sinceFirstTap
            && evidence.sinceChange && *evidence.sinceChange < *evidence.sinceFirstTap;
        return isDroppedByTap
            && (!evidence.sinceChangeBeforeTaps
                || isOfChange(publication, *evidence.sinceChangeBeforeTaps));
    }
    if (evidence.sinceChange) {
        return isOfChange(publication, *evidence.sinceChange);
    }
    return evidence.answer == Kind::Unfinished || !publication.sinceRead
        || *publication.sinceRead < rereadTime;
}

bool isLineOfCaret(QStringView copied)
{
    return copied.endsWith(u'\n') && copied.indexOf(u'\n') == copied.size() - 1;
}

} // namespace vellumo
