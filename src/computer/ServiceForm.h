// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ServiceAddress.h"
#include "explain/ServiceSetup.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <memory>

namespace vellumo {

class BilingualText;

/// View model of the service settings. ServiceSetup documents the choices.
class ServiceForm : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(Mode mode READ mode NOTIFY changed)
    Q_PROPERTY(bool isForced READ isForced NOTIFY changed)
    Q_PROPERTY(bool hasConfigured READ hasConfigured NOTIFY changed)
    Q_PROPERTY(bool isInUse READ isInUse NOTIFY changed)
    Q_PROPERTY(bool sendsToken READ sendsToken NOTIFY changed)
    Q_PROPERTY(QString base READ base NOTIFY changed)
    Q_PROPERTY(QString model READ model NOTIFY changed)
    Q_PROPERTY(QString defaultBase READ defaultBase CONSTANT)
    Q_PROPERTY(QString defaultModel READ defaultModel CONSTANT)
    Q_PROPERTY(bool isBaseFixed READ isBaseFixed NOTIFY changed)
    Q_PROPERTY(bool isModelFixed READ isModelFixed NOTIFY changed)
    Q_PROPERTY(QString choiceText READ choiceText NOTIFY changed)
    Q_PROPERTY(QString sentText READ sentText NOTIFY changed)
    Q_PROPERTY(QString fault READ fault NOTIFY changed)
    Q_PROPERTY(QString keyText READ keyText NOTIFY changed)
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY changed)
    Q_PROPERTY(bool canForgetKey READ canForgetKey NOTIFY changed)
    Q_PROPERTY(bool canUnlock READ canUnlock NOTIFY changed)
    Q_PROPERTY(QString addressError READ addressError NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)
    Q_PROPERTY(bool isGood READ isGood NOTIFY changed)
    Q_PROPERTY(bool isTrying READ isTrying NOTIFY changed)

public:
    enum class Mode : quint8 { Samples, Configured, Own };
    Q_ENUM(Mode)

    /// All must outlive the form.
    ServiceForm(ServiceSetup &setup, Clock &clock, const BilingualText &texts,
                QObject *parent = nullptr);

    /// Returns the displayed choice. An own service may not be in use yet.
    [[nodiscard]] Mode mode() const;
    [[nodiscard]] bool isForced() const { return setup_.use() == ServiceSetup::Use::Environment; }
    [[nodiscard]] bool hasConfigured() const { return setup_.hasConfigured(); }
    [[nodiscard]] bool isInUse() const { return setup_.use() == ServiceSetup::Use::Own; }
    /// Returns whether requests carry a token that identifies the signed-in user.
    [[nodiscard]] bool sendsToken() const { return setup_.sendsToken(); }
    [[nodiscard]] QString host() const { return setup_.host(); }
    [[nodiscard]] QString base() const { return setup_.base(); }
    [[nodiscard]] QString model() const { return setup_.model(); }
    [[nodiscard]] QString defaultBase() const { return ServiceEndpoint::defaultBase; }
    [[nodiscard]] QString defaultModel() const { return ServiceEndpoint::defaultModel; }
    /// Return whether an environment variable sets the value.
    [[nodiscard]] bool isBaseFixed() const { return ServiceSetup::isBaseFixed(); }
    [[nodiscard]] bool isModelFixed() const { return ServiceSetup::isModelFixed(); }
    [[nodiscard]] QString file() const { return setup_.config().userFile(); }
    /// Returns a description of the choice; empty for an own service.
    [[nodiscard]] QString choiceText() const;
    /// Returns a description of what is sent to the service.
    [[nodiscard]] QString sentText() const;
    /// Returns a description of a mistake in the configuration; empty without one.
    [[nodiscard]] QString fault() const;
    /// Returns where the key for the entered address is stored. The following properties refer to
    /// the same key.
    [[nodiscard]] QString keyText() const;
    [[nodiscard]] bool hasKey() const;
    [[nodiscard]] bool canForgetKey() const;
    [[nodiscard]] bool canUnlock() const;
    [[nodiscard]] QString addressError() const;
    /// Returns the result of the last action.
    [[nodiscard]] QString outcome() const;
    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] bool isTrying() const { return trial_ != nullptr; }

    Q_INVOKABLE void choose(Mode mode);
    /// Stores and applies the input. Returns false and shows the reason if it is invalid.
    Q_INVOKABLE bool save(const QString &base, const QString &model, const QString &key);
    /// Sends a small real request to the entered service.
    Q_INVOKABLE void tryOut(const QString &base, const QString &model, const QString &key);
    Q_INVOKABLE void forgetKey();
    Q_INVOKABLE void unlock();
    /// Called when the input has changed. Clears the result of the last action.
    Q_INVOKABLE void edited(const QString &base);

Q_SIGNALS:
    void changed();

private:
    enum class Outcome : quint8 { Nothing, Removed, Saved, Works, Failure };

    /// Absent, with the reason shown, for an invalid address.
    [[nodiscard]] std::optional<ServiceSetup::Entry>
    entryOf(const QString &base, const QString &model, const QString &key);
    [[nodiscard]] QString shownBase() const { return typedBase_.value_or(setup_.base()); }
    [[nodiscard]] ServiceKeys::Place keyPlace() const { return setup_.keyPlace(shownBase()); }
    /// Returns whether the service at this address may need a key that is missing.
    [[nodiscard]] bool lacksKey(const QString &base) const;
    [[nodiscard]] QString savedText() const;
    [[nodiscard]] QString removedText() const;
    void show(Outcome outcome, bool isGood);
    void endTrial(const std::optional<ExplanationFailure> &failure);

    ServiceSetup &setup_;
    Clock &clock_;
    const BilingualText &texts_;
    bool showsOwn_ = false; ///< while another one is in use
    std::optional<QString> typedBase_; ///< valid and not saved yet
    QString removedBase_; ///< address whose key was removed last
    ServiceAddress::Problem addressProblem_ = ServiceAddress::Problem::None;
    Outcome outcome_ = Outcome::Nothing;
    bool isGood_ = false;
    std::optional<ExplanationFailure> failure_;
    std::unique_ptr<QObject> trial_; ///< its destruction cancels the request
};

} // namespace vellumo
