// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <chrono>
#include <optional>

namespace vellumo {

/// What the selection reader must know of a focused element before it goes on.
enum class ElementKind : quint8 {
    Ordinary,
    Menu, ///< a menu, menu item or menu bar: the selection is elsewhere for the moment
    Password, ///< must never be read
    Terminal, ///< must never receive copy keys
};

/// The address of one element of another process's interface. Valid only for a moment: the element
/// may be gone at any time, and questions about it then have no answer.
struct AccessibleElement {
    qint64 processIdentifier = 0;
    QString service;
    QString path;
    ElementKind kind = ElementKind::Ordinary;
    bool isEditable = false; ///< whether the user can type into it
};

/// The longest selection, in UTF-16 units, that anything here works with.
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
        Nothing, ///< positively nothing
        Unfinished, ///< something, which could not be read to its end in time
        Unknown, ///< no answer
    };
    Kind kind = Kind::Unknown;
    QString text; ///< not empty if and only if kind is Text
};

/// Questions to other applications through the desktop's accessibility service.
///
/// Every question blocks at most until its deadline and never runs an event loop. A process that
/// let one question run into its time-out is not asked again for a short while, so that several
/// questions in a row cost one time-out. The own process is never asked. Main thread only.
class Accessibility : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether the user lets this process read other applications. Never blocks.
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// As isProcessTrusted(), but when it is not, asks the user. Returns at once with the present
    /// state; an answer arrives as trustChanged().
    virtual bool isProcessTrustedWithPrompt() = 0;

    /// Takes back what the user has allowed; questions have no answers from now on.
    virtual void withdrawConsent() = 0;

    /// Looks the trust up afresh without blocking; a difference arrives as trustChanged().
    virtual void refreshTrust() = 0;

    /// Whether other applications can be asked at this moment.
    [[nodiscard]] virtual bool isConnected() const { return isProcessTrusted(); }

    /// Whether the way to them is being opened, and has not failed since it was last open or
    /// wanted.
    [[nodiscard]] virtual bool isConnecting() const { return false; }

    /// Asks an application that builds its accessibility tree lazily to build it now. Has no
    /// effect where there is no such request.
    virtual void requestManualAccessibility(qint64 processIdentifier)
    {
        Q_UNUSED(processIdentifier)
    }

    /// Whether the process has left a question unanswered a moment ago.
    [[nodiscard]] virtual bool isUnresponsive(qint64 processIdentifier) const
    {
        Q_UNUSED(processIdentifier)
        return false;
    }

    /// The element with the keyboard focus, if the process says so.
    [[nodiscard]] virtual std::optional<AccessibleElement>
    focusedElement(qint64 processIdentifier, QDeadlineTimer deadline) = 0;

    /// The text selected in the element, embedded objects included, with line breaks between
    /// blocks. More than maxSelectionLength characters may come back cut, but longer than that.
    [[nodiscard]] virtual SelectedText selectedText(const AccessibleElement &element,
                                                    QDeadlineTimer deadline) = 0;

    /// How long ago the process last announced that a selection in it had changed, leaving out
    /// announcements of the last `atLeast`. Absent when it announced none. Never blocks.
    [[nodiscard]] virtual std::optional<std::chrono::milliseconds>
    sinceSelectionChange(qint64 processIdentifier, std::chrono::milliseconds atLeast)
    {
        Q_UNUSED(processIdentifier)
        Q_UNUSED(atLeast)
        return std::nullopt;
    }

    [[nodiscard]] virtual std::optional<TextRange>
    selectedTextRange(const AccessibleElement &element, QDeadlineTimer deadline) = 0;

    [[nodiscard]] virtual std::optional<QString>
    stringForRange(const AccessibleElement &element, TextRange range, QDeadlineTimer deadline) = 0;

    /// Title of the process's focused window; absent without trust, may be empty.
    [[nodiscard]] virtual std::optional<QString> focusedWindowTitle(qint64 processIdentifier) = 0;

    /// Address of the document that the process's active window shows, as the process spells it.
    [[nodiscard]] virtual std::optional<QString> pageAddress(qint64 processIdentifier,
                                                             QDeadlineTimer deadline) = 0;

Q_SIGNALS:
    /// The trust may have changed; ask isProcessTrusted(). Also emitted when the user allows what
    /// was already possible.
    void trustChanged();

    /// isConnected() or isConnecting() may answer something else now.
    void connectionChanged();
};

} // namespace vellumo
