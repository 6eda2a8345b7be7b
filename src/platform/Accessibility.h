// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <chrono>
#include <optional>

namespace vellumo {

/// Kinds of focused elements that the selection reader distinguishes.
enum class ElementKind : quint8 {
    Ordinary,
    Menu, ///< a menu, menu item or menu bar; the selection is in another element
    Password, ///< must never be read
    Terminal, ///< must never receive copy keys
};

/// Address of one element of another process's interface. The element may disappear at any time;
/// questions about it then have no answer.
struct AccessibleElement {
    qint64 processIdentifier = 0;
    QString service;
    QString path;
    ElementKind kind = ElementKind::Ordinary;
    bool isEditable = false; ///< whether the user can type into it
};

/// Maximum length of a selection, in UTF-16 units.
constexpr qsizetype maxSelectionLength = 20'000;

struct TextRange {
    int start = 0; ///< in code points
    int length = 0;
    friend bool operator==(const TextRange &, const TextRange &) = default;
};

/// The answer to "which text is selected".
struct SelectedText {
    enum class Kind : quint8 {
        Text,
        Nothing, ///< the application reports that nothing is selected
        Unfinished, ///< something is selected but could not be read in time
        Unknown, ///< no answer
    };
    Kind kind = Kind::Unknown;
    QString text; ///< not empty if and only if kind is Text
};

/// Queries other applications through the desktop's accessibility service.
///
/// Every question blocks at most until its deadline and never runs an event loop. A process that
/// let a question time out is skipped for a short while, so that several questions in a row cost
/// one timeout. This process is never asked. Main thread only.
class Accessibility : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns whether the user has allowed this process to read other applications. Never blocks.
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// As isProcessTrusted(), and asks the user if it is not. Returns the current state at once; an
    /// answer is reported by trustChanged().
    virtual bool isProcessTrustedWithPrompt() = 0;

    /// Withdraws the user's consent. Questions have no answers from then on.
    virtual void withdrawConsent() = 0;

    /// Queries the trust again without blocking; a change is reported by trustChanged().
    virtual void refreshTrust() = 0;

    /// Returns whether other applications can be queried now.
    [[nodiscard]] virtual bool isConnected() const { return isProcessTrusted(); }

    /// Returns whether the connection to them is being opened and has not failed since it was last
    /// open or requested.
    [[nodiscard]] virtual bool isConnecting() const { return false; }

    /// Asks an application that builds its accessibility tree lazily to build it now. Does nothing
    /// where no such request exists.
    virtual void requestManualAccessibility(qint64 processIdentifier)
    {
        Q_UNUSED(processIdentifier)
    }

    /// Returns whether the process recently let a question time out.
    [[nodiscard]] virtual bool isUnresponsive(qint64 processIdentifier) const
    {
        Q_UNUSED(processIdentifier)
        return false;
    }

    /// Returns the element with the keyboard focus; absent if the process reports none.
    [[nodiscard]] virtual std::optional<AccessibleElement>
    focusedElement(qint64 processIdentifier, QDeadlineTimer deadline) = 0;

    /// Returns the text selected in the element, embedded objects included, with line breaks
    /// between blocks. A text of more than maxSelectionLength characters may be truncated, but
    /// stays longer than that.
    [[nodiscard]] virtual SelectedText selectedText(const AccessibleElement &element,
                                                    QDeadlineTimer deadline) = 0;

    /// Returns how long ago the process last announced a change of a selection, ignoring
    /// announcements within the last `atLeast`. Absent when there was none. Never blocks.
    [[nodiscard]] virtual std::optional<std::chrono::milliseconds>
    sinceSelectionChange(qint64 processIdentifier, std::chrono::milliseconds atLeast)
    {
        Q_UNUSED(processIdentifier)
        Q_UNUSED(atLeast)
        return std::nullopt;
    }

    /// Returns the selected range; absent if there is none or the element does not report it.
    [[nodiscard]] virtual std::optional<TextRange>
    selectedTextRange(const AccessibleElement &element, QDeadlineTimer deadline) = 0;

    /// Returns the text in a range; absent without an answer.
    [[nodiscard]] virtual std::optional<QString>
    stringForRange(const AccessibleElement &element, TextRange range, QDeadlineTimer deadline) = 0;

    /// Returns the title of the process's focused window, which may be empty; absent without trust.
    [[nodiscard]] virtual std::optional<QString> focusedWindowTitle(qint64 processIdentifier) = 0;

    /// Returns the address of the document in the process's active window, as the process spells
    /// it.
    [[nodiscard]] virtual std::optional<QString> pageAddress(qint64 processIdentifier,
                                                             QDeadlineTimer deadline) = 0;

Q_SIGNALS:
    /// Emitted when isProcessTrusted() may have changed, and when the user agrees although trust
    /// already existed.
    void trustChanged();

    /// Emitted when isConnected() or isConnecting() may have changed.
    void connectionChanged();
};

} // namespace vellumo
