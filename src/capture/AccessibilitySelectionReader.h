// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "capture/OptionTaps.h"
#include "capture/SelectionReading.h"
#include "capture/SyntheticCopy.h"
#include "platform/Accessibility.h"
#include "platform/Pasteboard.h"
#include <optional>

namespace vellumo {

class DefaultsStore;
class EventMonitoring;
class KeyPosting;
class ReadingBudget;
class Workspace;
struct RunningApplication;

/// Reads the selection of the application in front: through accessibility; else the text that the
/// application published by selecting; else by making the application copy, after which the
/// clipboard is restored. Password fields are never read, terminals never receive keys, and nothing
/// is read without the user's trust.
class AccessibilitySelectionReader : public SelectionReading {
public:
    /// All must outlive the reader. `primary` may be null; without `settings` no application is
    /// excluded.
    struct Desktop {
        Workspace &workspace;
        Accessibility &accessibility;
        Pasteboard &pasteboard;
        PrimarySelection *primary;
        KeyPosting &keys;
        EventMonitoring &events;
        const DefaultsStore *settings = nullptr;
    };

    /// Each read starts the budget, which must outlive the reader.
    AccessibilitySelectionReader(const Desktop &desktop, ReadingBudget &budget);

    [[nodiscard]] std::optional<QString> currentSelectedText() override;

private:
    struct AccessibilityAnswer {
        SelectedText selected;
        ElementKind kind = ElementKind::Ordinary;
        bool isEditable = false;
    };

    /// Asks a second time if the held Option key may have moved the focus.
    [[nodiscard]] AccessibilityAnswer accessibilitySelectedText();
    [[nodiscard]] AccessibilityAnswer askFocusedElement(qint64 processIdentifier,
                                                        QDeadlineTimer deadline);
    [[nodiscard]] std::optional<AccessibleElement> focusedUIElement(qint64 processIdentifier,
                                                                    QDeadlineTimer deadline);
    /// Returns the selected text that the element itself reports.
    [[nodiscard]] SelectedText stringAttribute(const AccessibleElement &element,
                                               QDeadlineTimer deadline);
    [[nodiscard]] std::optional<QString> selectedTextViaRange(const AccessibleElement &element,
                                                              QDeadlineTimer deadline);
    /// Returns the text that the application copies on request.
    [[nodiscard]] std::optional<QString> clipboardSelectedText(const AccessibilityAnswer &answer);
    [[nodiscard]] std::optional<QString> publishedSelection(const AccessibilityAnswer &answer);
    [[nodiscard]] QString terminalText(const QString &text);
    [[nodiscard]] bool publishes(const RunningApplication &application);

    Desktop desktop_;
    ReadingBudget &budget_;
    OptionTaps taps_;
    SyntheticCopy copy_;
};

} // namespace vellumo
