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

/// Which service explains, as it is shown and changed on the page; see ServiceSetup for what the
/// choices mean.
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

    /// The choice that is shown; an own service need not be in use yet.
    [[nodiscard]] Mode mode() const;
    [[nodiscard]] bool isForced() const { return setup_.use() == ServiceSetup::Use::Environment; }
    [[nodiscard]] bool hasConfigured() const { return setup_.hasConfigured(); }
    [[nodiscard]] bool isInUse() const { return setup_.use() == ServiceSetup::Use::Own; }
    /// Whether a token that names the account of a signed-in user goes along with a selection.
    [[nodiscard]] bool sendsToken() const { return setup_.sendsToken(); }
    [[nodiscard]] QString host() const { return setup_.host(); }
    [[nodiscard]] QString base() const { return setup_.base(); }
    [[nodiscard]] QString model() const { return setup_.model(); }
    [[nodiscard]] QString defaultBase() const { return ServiceEndpoint::defaultBase; }
    [[nodiscard]] QString defaultModel() const { return ServiceEndpoint::defaultModel; }
    /// Whether the environment says it.
    [[nodiscard]] bool isBaseFixed() const { return ServiceSetup::isBaseFixed(); }
    [[nodiscard]] bool isModelFixed() const { return ServiceSetup::isModelFixed(); }
    [[nodiscard]] QString file() const { return setup_.config().userFile(); }
    /// What the choice means; empty for an own service.
    [[nodiscard]] QString choiceText() const;
    /// What goes to the service.
    [[nodiscard]] QString sentText() const;
    /// What is wrong with the configuration; empty when nothing is.
    [[nodiscard]] QString fault() const;
    /// Where the key for the address is that was typed last, and so with the rest of the key.
    [[nodiscard]] QString keyText() const;
    [[nodiscard]] bool hasKey() const;
    [[nodiscard]] bool canForgetKey() const;
    [[nodiscard]] bool canUnlock() const;
    [[nodiscard]] QString addressError() const;
    /// What has come of the last thing that was done here.
    [[nodiscard]] QString outcome() const;
    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] bool isTrying() const { return trial_ != nullptr; }

    Q_INVOKABLE void choose(Mode mode);
    /// Takes what was typed over, at once and for later runs; false with the reason shown.
    Q_INVOKABLE bool save(const QString &base, const QString &model, const QString &key);
    /// Sends one small real request to what was typed.
    Q_INVOKABLE void tryOut(const QString &base, const QString &model, const QString &key);
    Q_INVOKABLE void forgetKey();
    Q_INVOKABLE void unlock();
    /// What was typed has changed: what was said about it is out of date.
    Q_INVOKABLE void edited(const QString &base);

Q_SIGNALS:
    void changed();

private:
    enum class Said : quint8 { Nothing, Removed, Saved, Works, Failure };

    /// Nothing, with the reason shown, when there is no such address.
    [[nodiscard]] std::optional<ServiceSetup::Entry>
    entryOf(const QString &base, const QString &model, const QString &key);
    [[nodiscard]] QString shownBase() const { return typedBase_.value_or(setup_.base()); }
    [[nodiscard]] ServiceKeys::Place keyPlace() const { return setup_.keyPlace(shownBase()); }
    /// Whether it is without a key that it may need.
    [[nodiscard]] bool lacksKey(const QString &base) const;
    [[nodiscard]] QString savedText() const;
    [[nodiscard]] QString removedText() const;
    void say(Said said, bool isGood);
    void endTrial(const std::optional<ExplanationFailure> &failure);

    ServiceSetup &setup_;
    Clock &clock_;
    const BilingualText &texts_;
    bool showsOwn_ = false; ///< although something else is in use
    std::optional<QString> typedBase_; ///< unless it was saved, or is no address
    QString removedBase_; ///< whose key was removed last
    ServiceAddress::Problem addressProblem_ = ServiceAddress::Problem::None;
    Said said_ = Said::Nothing;
    bool isGood_ = false;
    std::optional<ExplanationFailure> failure_;
    std::unique_ptr<QObject> trial_; ///< ends the request when it goes
};

} // namespace vellumo
