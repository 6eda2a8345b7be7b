// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "onboarding/OnboardingPhase.h"
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;

/// The question of the card that is shown, for the drawing, and what has been answered so far. On a
/// card that asks nothing it is empty.
class SurveyModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(int columns READ columns NOTIFY shown)
    Q_PROPERTY(QStringList options READ options NOTIFY shown)
    Q_PROPERTY(QString answer READ answer NOTIFY changed)
    Q_PROPERTY(int choice READ choice NOTIFY changed)

public:
    /// The texts must outlive the model.
    explicit SurveyModel(BilingualText &texts, QObject *parent = nullptr);

    void show(Phase phase);

    [[nodiscard]] QString title() const;
    [[nodiscard]] int columns() const;
    /// The English labels, which identify the options.
    [[nodiscard]] QStringList options() const;
    /// The option that is chosen; empty when there is none.
    [[nodiscard]] QString answer() const { return surveyAnswers_.value(phase_); }
    /// Its place among the options; -1 when there is none.
    [[nodiscard]] int choice() const;
    Q_INVOKABLE [[nodiscard]] QString chineseLabel(int option) const;
    Q_INVOKABLE [[nodiscard]] QString iconFile(int option) const;
    Q_INVOKABLE void choose(const QString &option);
    /// Removes the answer to a question.
    void forget(Phase phase);

    [[nodiscard]] std::optional<QString> answerOf(Phase phase) const;

Q_SIGNALS:
    void changed();
    /// Another question, or none.
    void shown();

private:
    BilingualText &texts_;
    Phase phase_ = Phase::signIn;
    QMap<Phase, QString> surveyAnswers_; ///< English labels
};

} // namespace vellumo
