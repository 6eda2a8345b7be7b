// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiAccessibility.h"

#include "platform/atspi/AtspiQuestion.h"
#include "platform/atspi/EmbeddedText.h"
#include "platform/atspi/PageAddress.h"
#include "platform/atspi/SelectionShapes.h"
#include "platform/atspi/TextRanges.h"
#include <QCoreApplication>
#include <algorithm>

namespace vellumo {
namespace {

ElementKind kindOf(Atspi::Role role)
{
    if (role == Atspi::Role::PasswordText) {
        return ElementKind::Password;
    }
    if (role == Atspi::Role::Terminal) {
        return ElementKind::Terminal;
    }
    return Atspi::isMenuRole(role) ? ElementKind::Menu : ElementKind::Ordinary;
}

ObjectReference objectOf(const AccessibleElement &element)
{
    return {element.service, element.path};
}

} // namespace

AtspiAccessibility::AtspiAccessibility(const Collaborators &with, QObject *parent)
    : Accessibility(parent)
    , windowTitle_(with.windowTitle)
    , bus_(with.session)
    , trust_(with.session, with.defaults, with.settings, with.prompting)
    , applications_(windowTitle_)
    , focusSearch_(applications_, focusEvents_)
{
    registerAtspiTypes();
    connect(&trust_, &AtspiTrust::changed, this, &AtspiAccessibility::onTrustChanged);
    connect(&bus_, &AtspiBus::opened, &focusEvents_, &FocusEvents::listenOn);
    connect(&bus_, &AtspiBus::closed, this, &AtspiAccessibility::forgetApplications);
    connect(&bus_, &AtspiBus::opened, this, &AtspiAccessibility::connectionChanged);
    connect(&bus_, &AtspiBus::closed, this, &AtspiAccessibility::connectionChanged);
    connect(&bus_, &AtspiBus::failed, this, &AtspiAccessibility::connectionChanged);
    bus_.setWanted(trust_.isTrusted());
}

bool AtspiAccessibility::isProcessTrusted() const
{
    return trust_.isTrusted();
}

bool AtspiAccessibility::isProcessTrustedWithPrompt()
{
    return trust_.requestTrust();
}

void AtspiAccessibility::refreshTrust()
{
    trust_.refresh();
}

void AtspiAccessibility::withdrawConsent()
{
    trust_.withdrawConsent();
}

/// Runs `asker` with the bus name of the process, and once more if a cached name is no longer
/// owned.
template <typename Answer, typename Asker>
Answer AtspiAccessibility::askApplication(qint64 processIdentifier, AtspiQuestion &question,
                                          const Asker &asker)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        const auto service = applications_.serviceOf(processIdentifier, question);
        if (!service) {
            break;
        }
        Answer answer = asker(*service);
        if (answer || !question.hasLostService()) {
            return answer;
        }
        applications_.forget(*service);
        focusEvents_.forget(*service);
    }
    return Answer();
}

bool AtspiAccessibility::isUnresponsive(qint64 processIdentifier) const
{
    const QStringList services = applications_.knownServices(processIdentifier);
    return std::ranges::any_of(
        services, [this](const QString &service) { return unresponsive_.contains(service); });
}

std::optional<AccessibleElement> AtspiAccessibility::focusedElement(qint64 processIdentifier,
                                                                    QDeadlineTimer deadline)
{
    auto question = questionTo(processIdentifier, deadline);
    if (!question) {
        return std::nullopt;
    }
    const auto focused = askApplication<std::optional<FocusedObject>>(
        processIdentifier, *question, [&](const QString &service) {
            return focusSearch_.find(processIdentifier, service, *question);
        });
    if (!focused) {
        return std::nullopt;
    }
    focusedService_ = {processIdentifier, focused->object.service};
    return AccessibleElement{processIdentifier, focused->object.service, focused->object.path,
                             kindOf(focused->role), focused->isEditable};
}

SelectedText AtspiAccessibility::selectedText(const AccessibleElement &element,
                                              QDeadlineTimer deadline)
{
    auto question = questionAbout(element, deadline);
    if (!question) {
        return {};
    }
    SelectedText selected = readSelection(objectOf(element), *question);
    const bool isUncertain = selected.kind == SelectedText::Kind::Unknown
        || selected.kind == SelectedText::Kind::Unfinished;
    uncertainObject_ = isUncertain ? element.service + element.path : QString();
    return selected;
}

std::optional<std::chrono::milliseconds>
AtspiAccessibility::sinceSelectionChange(qint64 processIdentifier,
                                         std::chrono::milliseconds atLeast)
{
    // process what arrived during the question
    QCoreApplication::sendPostedEvents(&focusEvents_, QEvent::MetaCall);
    const auto &[process, service] = focusedService_;
    return process == processIdentifier ? focusEvents_.sinceSelectionChange(service, atLeast)
                                        : std::nullopt;
}

std::optional<TextRange> AtspiAccessibility::selectedTextRange(const AccessibleElement &element,
                                                               QDeadlineTimer deadline)
{
    auto question = questionAbout(element, deadline);
    if (!question) {
        return std::nullopt;
    }
    const auto selected = PendingRanges(objectOf(element), *question).take();
    // Part of a selection must not be returned as the whole.
    if (element.service + element.path == uncertainObject_ || !selected || !selected->isComplete
        || selected->ranges.size() != 1) {
        return std::nullopt;
    }
    const OffsetRange only = selected->ranges.constFirst();
    return TextRange{only.start, only.end - only.start};
}

std::optional<QString> AtspiAccessibility::stringForRange(const AccessibleElement &element,
                                                          TextRange range, QDeadlineTimer deadline)
{
    auto question = questionAbout(element, deadline);
    if (!question || range.start < 0 || range.length <= 0) {
        return std::nullopt;
    }
    auto roleAnswer = question->send(objectOf(element), Atspi::accessible, "GetRole");
    const OffsetQuality offsets = offsetQualityOf(element.service, *question);
    const auto role = roleAnswer.value<quint32>();
    if (!role || static_cast<Atspi::Role>(*role) == Atspi::Role::PasswordText) {
        return std::nullopt;
    }
    return embeddedText(objectOf(element), {{range.start, range.start + range.length}}, offsets,
                        *question);
}

std::optional<QString> AtspiAccessibility::focusedWindowTitle(qint64 processIdentifier)
{
    return isProcessTrusted() && windowTitle_ ? windowTitle_(processIdentifier) : std::nullopt;
}

std::optional<QString> AtspiAccessibility::pageAddress(qint64 processIdentifier,
                                                       QDeadlineTimer deadline)
{
    auto question = questionTo(processIdentifier, deadline);
    if (!question) {
        return std::nullopt;
    }
    return askApplication<std::optional<QString>>(
        processIdentifier, *question, [&](const QString &service) -> std::optional<QString> {
            const auto frame = applications_.activeFrame(processIdentifier, service, *question);
            return frame ? pageAddressIn(*frame, processIdentifier, *question) : std::nullopt;
        });
}

std::optional<AtspiQuestion> AtspiAccessibility::questionTo(qint64 processIdentifier,
                                                            QDeadlineTimer deadline)
{
    // A call to this process would deadlock: the main thread would wait for itself.
    if (processIdentifier == QCoreApplication::applicationPid() || !isProcessTrusted()) {
        return std::nullopt;
    }
    const auto bus = bus_.connection();
    return bus ? std::optional<AtspiQuestion>(std::in_place, *bus, unresponsive_, deadline)
               : std::nullopt;
}

std::optional<AtspiQuestion> AtspiAccessibility::questionAbout(const AccessibleElement &element,
                                                               QDeadlineTimer deadline)
{
    if (element.kind == ElementKind::Password || objectOf(element).isNull()) {
        return std::nullopt;
    }
    return questionTo(element.processIdentifier, deadline);
}

void AtspiAccessibility::onTrustChanged()
{
    bus_.setWanted(trust_.isTrusted());
    Q_EMIT trustChanged();
}

void AtspiAccessibility::forgetApplications()
{
    applications_.clear();
    focusEvents_.clear();
    unresponsive_.clear();
}

} // namespace vellumo
