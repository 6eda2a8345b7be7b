// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "onboarding/SurveyModel.h"

#include "onboarding/Survey.h"
#include "ui/BilingualText.h"

namespace vellumo {

SurveyModel::SurveyModel(BilingualText &texts, QObject *parent) : QObject(parent), texts_(texts)
{
    connect(&texts_, &BilingualText::languageChanged, this, &SurveyModel::changed);
}

void SurveyModel::show(Phase phase)
{
    phase_ = phase;
    Q_EMIT changed();
    Q_EMIT shown();
}

QString SurveyModel::title() const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? texts_.pick(survey->english, survey->chinese) : QString();
}

int SurveyModel::columns() const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? survey->columns : 0;
}

QStringList SurveyModel::options() const
{
    QStringList labels;
    if (const Survey *survey = surveyOf(phase_)) {
        for (const SurveyOption &option : survey->options) {
            labels.append(option.english);
        }
    }
    return labels;
}

int SurveyModel::choice() const
{
    return static_cast<int>(options().indexOf(answer()));
}

QString SurveyModel::chineseLabel(int option) const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? survey->options.value(option).chinese : QString();
}

QString SurveyModel::iconFile(int option) const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? surveyIconFile(survey->options.value(option).icon) : QString();
}

void SurveyModel::choose(const QString &option)
{
    if (options().contains(option)) {
        surveyAnswers_.insert(phase_, option);
        Q_EMIT changed();
    }
}

void SurveyModel::forget(Phase phase)
{
    if (surveyAnswers_.remove(phase)) {
        Q_EMIT changed();
    }
}

std::optional<QString> SurveyModel::answerOf(Phase phase) const
{
    const auto found = surveyAnswers_.constFind(phase);
    return found != surveyAnswers_.constEnd() ? std::optional(*found) : std::nullopt;
}

} // namespace vellumo
