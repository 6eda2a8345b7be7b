// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/atspi/AtspiApplications.h"
#include "platform/atspi/AtspiBus.h"
#include "platform/atspi/AtspiTrust.h"
#include "platform/atspi/FocusEvents.h"
#include "platform/atspi/FocusSearch.h"
#include "platform/atspi/UnresponsiveServices.h"
#include "platform/dbus/SessionBus.h"

namespace vellumo {

class AtspiQuestion;

/// Queries other applications over the accessibility bus, which is open only while this process is
/// trusted. Offsets of ranges are the application's own: code points in most, UTF-16 units in Qt
/// applications.
class AtspiAccessibility : public Accessibility {
    Q_OBJECT

public:
    using WindowTitle = std::function<std::optional<QString>(qint64 processIdentifier)>;

    struct Collaborators {
        SessionBus &session; ///< opened by the constructor
        DefaultsStore &defaults;
        TrustSettings settings;
        ConsentPrompting &prompting;
        /// Returns the title of the process's window in front, from the window system.
        WindowTitle windowTitle;
    };

    explicit AtspiAccessibility(const Collaborators &with, QObject *parent = nullptr);

    /// Returns the accessibility bus, which is open only while this process is trusted.
    [[nodiscard]] AtspiBus &bus() { return bus_; }

    [[nodiscard]] bool isProcessTrusted() const override;
    bool isProcessTrustedWithPrompt() override;
    void refreshTrust() override;

    void withdrawConsent() override;

    /// Becomes true a moment after isProcessTrusted(), when the accessibility bus is open.
    [[nodiscard]] bool isConnected() const override { return bus_.isOpen(); }
    [[nodiscard]] bool isConnecting() const override { return bus_.isOpening(); }

    [[nodiscard]] bool isUnresponsive(qint64 processIdentifier) const override;
    [[nodiscard]] std::optional<AccessibleElement> focusedElement(qint64 processIdentifier,
                                                                  QDeadlineTimer deadline) override;
    [[nodiscard]] SelectedText selectedText(const AccessibleElement &element,
                                            QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<std::chrono::milliseconds>
    sinceSelectionChange(qint64 processIdentifier, std::chrono::milliseconds atLeast) override;
    [[nodiscard]] std::optional<TextRange> selectedTextRange(const AccessibleElement &element,
                                                             QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> stringForRange(const AccessibleElement &element,
                                                        TextRange range,
                                                        QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> focusedWindowTitle(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> pageAddress(qint64 processIdentifier,
                                                     QDeadlineTimer deadline) override;

private:
    [[nodiscard]] std::optional<AtspiQuestion> questionTo(qint64 processIdentifier,
                                                          QDeadlineTimer deadline);
    [[nodiscard]] std::optional<AtspiQuestion> questionAbout(const AccessibleElement &element,
                                                             QDeadlineTimer deadline);
    template <typename Answer, typename Asker>
    Answer askApplication(qint64 processIdentifier, AtspiQuestion &question, const Asker &asker);
    void onTrustChanged();
    void forgetApplications();

    WindowTitle windowTitle_;
    std::pair<qint64, QString> focusedService_; ///< process and service of the last focused element
    QString uncertainObject_; ///< service and path; its selection is uncertain
    AtspiBus bus_;
    AtspiTrust trust_;
    UnresponsiveServices unresponsive_;
    AtspiApplications applications_;
    FocusEvents focusEvents_;
    FocusSearch focusSearch_;
};

} // namespace vellumo
