// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "computer/DesktopReporting.h"
#include "computer/ServiceForm.h"
#include "computer/TapReach.h"
#include "platform/Accessibility.h"
#include "platform/LoginStart.h"
#include <QDateTime>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace vellumo {

class DefaultsStore;
class ForwardingExplainer;

/// View model of the page "This computer".
class ComputerModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isTrusted READ isTrusted NOTIFY trustChanged)
    Q_PROPERTY(vellumo::ServiceForm *service READ service CONSTANT)
    Q_PROPERTY(vellumo::TapReach *taps READ taps CONSTANT)
    Q_PROPERTY(bool readsByCopying READ readsByCopying NOTIFY copyingChanged)
    Q_PROPERTY(QString copyingText READ copyingText NOTIFY copyingChanged)
    Q_PROPERTY(bool showsPill READ showsPill NOTIFY pillChanged)
    Q_PROPERTY(QVariantList facts READ facts NOTIFY factsChanged)
    Q_PROPERTY(bool needsAction READ needsAction NOTIFY factsChanged)
    Q_PROPERTY(bool startsAtLogin READ startsAtLogin NOTIFY loginChanged)
    Q_PROPERTY(QString loginText READ loginText NOTIFY loginChanged)
    Q_PROPERTY(QString explanationProblem READ explanationProblem NOTIFY problemsChanged)
    Q_PROPERTY(QString explanationTime READ explanationTime NOTIFY problemsChanged)

public:
    /// All must outlive the model.
    struct Collaborators {
        Accessibility &accessibility;
        ServiceSetup &service;
        const ForwardingExplainer &explainer;
        DesktopReporting &desktop;
        LoginStart &login;
        Clock &clock;
        const BilingualText &texts;
        DefaultsStore &defaults;
    };

    explicit ComputerModel(const Collaborators &collaborators, QObject *parent = nullptr);

    /// Called to withdraw the consent without the warning about lost permission.
    std::function<void()> onWithdrawConsent;

    [[nodiscard]] bool isTrusted() const { return with_.accessibility.isProcessTrusted(); }
    Q_INVOKABLE void allow();
    Q_INVOKABLE void withdraw();

    [[nodiscard]] ServiceForm *service() { return &service_; }
    [[nodiscard]] TapReach *taps() { return &taps_; }

    [[nodiscard]] bool readsByCopying() const;
    Q_INVOKABLE void setReadsByCopying(bool copies);
    /// Returns an explanation of copying, with the excluded applications.
    [[nodiscard]] QString copyingText() const;
    [[nodiscard]] bool showsPill() const;
    Q_INVOKABLE void setShowsPill(bool shows);
    /// Returns the features of the desktop, each as a DesktopFact.
    [[nodiscard]] QVariantList facts() const;
    /// Returns whether the user can do something about one of them.
    [[nodiscard]] bool needsAction() const;

    [[nodiscard]] bool startsAtLogin() const;
    /// Returns a remark on the state of the autostart entry; empty for plain on and off.
    [[nodiscard]] QString loginText() const;
    Q_INVOKABLE void setStartsAtLogin(bool starts);

    /// Return the last failure of an explanation with advice, and its time; empty without one.
    [[nodiscard]] QString explanationProblem() const;
    [[nodiscard]] QString explanationTime() const;

    /// Returns the time as "18:42", with the date unless it is today.
    [[nodiscard]] Q_INVOKABLE QString timeText(const QDateTime &time) const;

    /// Updates everything when the page is shown.
    Q_INVOKABLE void refresh();
    /// Scrolls to the fields of the service.
    void askForService() { Q_EMIT serviceRequested(); }

Q_SIGNALS:
    void trustChanged();
    void copyingChanged();
    void pillChanged();
    void factsChanged();
    void loginChanged();
    void problemsChanged();
    void serviceRequested();

private:
    Collaborators with_;
    ServiceForm service_;
    TapReach taps_;
    bool hasLoginFailed_ = false;
};

} // namespace vellumo
