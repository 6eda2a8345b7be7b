// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/AccessibilitySelectionReader.h"

#include "capture/ReadingBudget.h"
#include "capture/SelectionEvidence.h"
#include "platform/EventMonitoring.h"
#include "platform/Workspace.h"

#include <QThread>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto accessibilityTime = 250ms;
constexpr auto reserveForOtherRoads = 100ms; // kept when accessibility is asked a second time
constexpr auto optionReleaseTime = 250ms;
// A browser takes the focus back from the menu bar some milliseconds after the second press.
constexpr auto focusReturnTime = 40ms;
constexpr auto focusReturnStep = 6ms;
constexpr auto publishedSelectionTime = 150ms;

bool isBlank(const QString &text)
{
    return QStringView(text).trimmed().isEmpty();
}

// Removes placeholders for images, embedded objects and marks.
QString withoutFillers(QString text)
{
    return text.removeIf([](QChar c) { return c == u'\xFFFC' || c == u'\xFEFF' || c.isNull(); });
}

std::optional<QString> readable(const std::optional<QString> &text)
{
    if (!text) {
        return std::nullopt;
    }
    QString stripped = withoutFillers(*text);
    return isBlank(stripped) ? std::nullopt : std::optional(std::move(stripped));
}

} // namespace

AccessibilitySelectionReader::AccessibilitySelectionReader(const Desktop &desktop,
                                                           ReadingBudget &budget)
    : desktop_(desktop)
    , budget_(budget)
    , taps_(desktop.events)
    , copy_({.accessibility = desktop.accessibility,
             .pasteboard = desktop.pasteboard,
             .keys = desktop.keys,
             .events = desktop.events,
             .settings = desktop.settings},
            budget)
{
}

std::optional<QString> AccessibilitySelectionReader::currentSelectedText()
{
    budget_.start();
    if (desktop_.workspace.isOwnWindowActive()) {
        return readable(desktop_.workspace.ownSelectedText());
    }
    if (!desktop_.accessibility.isProcessTrusted()) {
        return std::nullopt;
    }
    const AccessibilityAnswer answer = accessibilitySelectedText();
    if (answer.kind == ElementKind::Password) {
        return std::nullopt;
    }
    if (auto text = readable(answer.selected.text)) {
        return answer.kind == ElementKind::Terminal ? terminalText(*text) : text;
    }
    if (auto text = publishedSelection(answer)) {
        return text;
    }
    // An editor without a selection may copy the line of its caret.
    if (answer.selected.kind == SelectedText::Kind::Nothing && answer.isEditable) {
        return std::nullopt;
    }
    return clipboardSelectedText(answer);
}

AccessibilitySelectionReader::AccessibilityAnswer
AccessibilitySelectionReader::accessibilitySelectedText()
{
    const auto application = desktop_.workspace.frontmostApplication();
    if (!application) {
        return {};
    }
    desktop_.accessibility.requestManualAccessibility(application->processIdentifier);
    const auto ask = [this, &application](std::chrono::milliseconds reserve) {
        const auto time = std::min<std::chrono::milliseconds>(accessibilityTime,
                                                              budget_.leftForSelection() - reserve);
        return askFocusedElement(application->processIdentifier,
                                 QDeadlineTimer(std::max(time, std::chrono::milliseconds::zero())));
    };
    AccessibilityAnswer answer = ask(0ms);

    // Option is still held during the trigger, and in some applications this has moved the focus to
    // a menu bar, where nothing is selected.
    const QDeadlineTimer focusReturn = budget_.selectionDeadline(focusReturnTime);
    while (
        answer.kind == ElementKind::Menu && !focusReturn.hasExpired()
        && !desktop_.events.waitForRelease(ModifierFlag::Option, QDeadlineTimer(focusReturnStep))) {
        answer = ask(reserveForOtherRoads);
    }
    const bool mayBeInMenu =
        answer.kind == ElementKind::Menu || answer.selected.kind == SelectedText::Kind::Nothing;
    if (!mayBeInMenu) {
        return answer;
    }
    const bool isReleased = desktop_.events.waitForRelease(
        ModifierFlag::Option, budget_.selectionDeadline(optionReleaseTime));
    QThread::msleep(static_cast<unsigned long>(
        std::min(ReadingBudget::menuSettleTime, budget_.leftForSelection()).count()));
    budget_.areMenusClosed = isReleased;
    AccessibilityAnswer second = ask(reserveForOtherRoads);
    // Without a second answer, "nothing" from an ordinary element remains valid.
    const bool firstHolds = second.selected.kind == SelectedText::Kind::Unknown
        && second.kind == ElementKind::Ordinary && answer.kind != ElementKind::Menu;
    return firstHolds ? answer : second;
}

AccessibilitySelectionReader::AccessibilityAnswer
AccessibilitySelectionReader::askFocusedElement(qint64 processIdentifier, QDeadlineTimer deadline)
{
    const auto element = focusedUIElement(processIdentifier, deadline);
    if (!element) {
        return {};
    }
    if (element->kind == ElementKind::Password) {
        return {{}, ElementKind::Password, element->isEditable};
    }
    SelectedText selected = stringAttribute(*element, deadline);
    if (selected.kind != SelectedText::Kind::Text) {
        if (const auto text = selectedTextViaRange(*element, deadline)) {
            selected = {SelectedText::Kind::Text, *text};
        }
    }
    return {selected, element->kind, element->isEditable};
}

std::optional<AccessibleElement>
AccessibilitySelectionReader::focusedUIElement(qint64 processIdentifier, QDeadlineTimer deadline)
{
    return desktop_.accessibility.focusedElement(processIdentifier, deadline);
}

SelectedText AccessibilitySelectionReader::stringAttribute(const AccessibleElement &element,
                                                           QDeadlineTimer deadline)
{
    return desktop_.accessibility.selectedText(element, deadline);
}

std::optional<QString>
AccessibilitySelectionReader::selectedTextViaRange(const AccessibleElement &element,
                                                   QDeadlineTimer deadline)
{
    const auto range = desktop_.accessibility.selectedTextRange(element, deadline);
    if (!range) {
        return std::nullopt;
    }
    auto text = desktop_.accessibility.stringForRange(element, *range, deadline);
    return text && !text->isEmpty() ? text : std::nullopt;
}

std::optional<QString>
AccessibilitySelectionReader::clipboardSelectedText(const AccessibilityAnswer &answer)
{
    if (answer.kind == ElementKind::Terminal) {
        return std::nullopt;
    }
    const auto application = desktop_.workspace.frontmostApplication();
    if (!application) {
        return std::nullopt;
    }
    const bool isSelected = answer.selected.kind == SelectedText::Kind::Unfinished;
    const auto copied = copy_.textFrom(*application,
                                       isSelected ? SyntheticCopy::Selection::Known
                                                  : SyntheticCopy::Selection::Unknown);
    // An editor without a selection may copy the line of the caret.
    const bool mayBeLine = application->isTextEditor || publishes(*application);
    if (copied && !isSelected && mayBeLine && isLineOfCaret(*copied)) {
        return std::nullopt;
    }
    return readable(copied);
}

/// Returns what the terminal has published, if it is current, rather than its text by
/// accessibility. VTE counts wide characters as two in the selection's end. With GTK 4 it also
/// counts lines that have scrolled away, which are not in its text, so that other lines are
/// selected there.
QString AccessibilitySelectionReader::terminalText(const QString &text)
{
    AccessibilityAnswer answer;
    answer.kind = ElementKind::Terminal;
    answer.selected.kind = SelectedText::Kind::Unfinished;
    return publishedSelection(answer).value_or(text);
}

/// Returns whether the application publishes its selections, so that a current one would be in
/// PRIMARY.
bool AccessibilitySelectionReader::publishes(const RunningApplication &application)
{
    return desktop_.primary != nullptr
        && desktop_.primary->publishes(application.processIdentifier);
}

std::optional<QString>
AccessibilitySelectionReader::publishedSelection(const AccessibilityAnswer &answer)
{
    const auto application = desktop_.workspace.frontmostApplication();
    if (desktop_.primary == nullptr || !application) {
        return std::nullopt;
    }
    const qint64 process = application->processIdentifier;
    const auto publication = desktop_.primary->publication();
    SelectionEvidence evidence{answer.selected.kind, answer.isEditable, taps_.sinceFirst(), {}, {}};
    // A terminal publishes each selection, but announces changes of it also when only its text has
    // changed.
    const bool isOfTerminal = answer.kind == ElementKind::Terminal
        && answer.selected.kind == SelectedText::Kind::Unfinished;
    if (!isOfTerminal) {
        evidence.sinceChange = desktop_.accessibility.sinceSelectionChange(process, 0ms);
        evidence.sinceChangeBeforeTaps = desktop_.accessibility.sinceSelectionChange(
            process, evidence.sinceFirstTap.value_or(0ms));
    }
    if (!publication || publication->processIdentifier != process
        || !isStillSelected(*publication, evidence)) {
        return std::nullopt;
    }
    return readable(desktop_.primary->string(budget_.selectionDeadline(publishedSelectionTime)));
}

} // namespace vellumo
