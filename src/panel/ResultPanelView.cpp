// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "panel/ResultPanelView.h"

#include "notes/PageAddress.h"
#include "panel/PanelText.h"

namespace vellumo {

void ResultPanelView::show(const IslandContent &content,
                           const std::optional<ReadingContext> &context, Drawing drawing)
{
    contextName_ = context ? panelText::title(shortNameOf(*context)) : QString();
    if (drawing == Drawing::Fresh) {
        thread_.setRows({}); // rows of another conversation must not be extended
        setHasUnsentText(false);
    }
    take(content);
    Q_EMIT contentChanged();
    if (drawing == Drawing::Fresh) {
        Q_EMIT freshlyPresented();
    }
}

void ResultPanelView::setContext(const std::optional<ReadingContext> &context)
{
    contextName_ = context ? panelText::title(shortNameOf(*context)) : QString();
    Q_EMIT contentChanged();
}

void ResultPanelView::take(const IslandContent &content)
{
    failure_.reset();
    if (const auto *loading = std::get_if<IslandContent::Loading>(&content.value)) {
        state_ = State::Loading;
        sourceText_ = panelText::source(loading->sourceText);
        translation_.clear();
        explanation_.clear();
        thread_.setRows({});
    } else if (const auto *result = std::get_if<IslandContent::Result>(&content.value)) {
        state_ = result->sourceText ? State::Result : State::Error;
        sourceText_ = panelText::source(result->sourceText.value_or(QString()));
        translation_ = panelText::answer(result->result.translation);
        explanation_ = panelText::answer(result->result.explanation);
        failure_ = result->failure;
        thread_.setRows(result->thread);
    } else if (const auto *demo = std::get_if<IslandContent::Demo>(&content.value)) {
        state_ = State::Demo;
        sourceText_.clear();
        translation_ = panelText::answer(demo->result.translation);
        explanation_ = panelText::answer(demo->result.explanation);
        thread_.setRows({});
    }
}

void ResultPanelView::setLimits(qreal topInset, qreal maximumHeight)
{
    if (topInset != topInset_ || maximumHeight != maximumHeight_) {
        topInset_ = topInset;
        maximumHeight_ = maximumHeight;
        Q_EMIT limitsChanged();
    }
}

void ResultPanelView::setOffersPermission(bool offers)
{
    if (offers != offersPermission_) {
        offersPermission_ = offers;
        Q_EMIT contentChanged();
    }
}

void ResultPanelView::setIsSample(bool sample, bool leadsToService, bool forAFault)
{
    if (sample != isSample_ || leadsToService != leadsToService_ || forAFault != isForAFault_) {
        isSample_ = sample;
        leadsToService_ = leadsToService;
        isForAFault_ = forAFault;
        Q_EMIT contentChanged();
    }
}

void ResultPanelView::setOffersService(bool offers)
{
    if (offers != offersService_) {
        offersService_ = offers;
        Q_EMIT contentChanged();
    }
}

void ResultPanelView::setShown(bool shown)
{
    if (shown != isShown_) {
        isShown_ = shown;
        Q_EMIT shownChanged();
    }
}

void ResultPanelView::setHasUnsentText(bool unsent)
{
    if (unsent != hasUnsentText_) {
        hasUnsentText_ = unsent;
        Q_EMIT unsentTextChanged();
    }
}

qreal ResultPanelView::fittingHeight()
{
    Q_EMIT fittingHeightRequested();
    return fittingHeight_;
}

QString ResultPanelView::latestText() const
{
    if (thread_.rowCount() > 0) {
        return thread_.latestAnswer();
    }
    return translation_.isEmpty() ? explanation_ : translation_ + u'\n' + explanation_;
}

std::optional<ExplanationFailure> ResultPanelView::latestFailure() const
{
    return failure_ ? failure_ : thread_.latestFailure();
}

QString ResultPanelView::reason() const
{
    const auto failure = latestFailure();
    return failure && describeFailure ? describeFailure(*failure) : QString();
}

bool ResultPanelView::offersCopy() const
{
    return state_ == State::Result && !awaitsAnswer() && !latestFailure();
}

bool ResultPanelView::offersNote() const
{
    return state_ == State::Result && !awaitsAnswer() && !contextName_.isEmpty();
}

void ResultPanelView::close()
{
    if (onClose) {
        onClose();
    }
}

void ResultPanelView::allowAccessibility()
{
    Q_EMIT accessibilityRequested();
}

void ResultPanelView::openServiceSettings()
{
    Q_EMIT serviceSettingsRequested();
}

void ResultPanelView::retry()
{
    Q_EMIT retryRequested();
}

void ResultPanelView::copy()
{
    Q_EMIT copyRequested(latestText().trimmed());
}

void ResultPanelView::openNote()
{
    Q_EMIT noteRequested();
}

bool ResultPanelView::isTooLong(const QString &draft) const
{
    return draft.size() > panelText::maxQuestionLength;
}

bool ResultPanelView::submitFollowUp(const QString &draft)
{
    const QString question = draft.trimmed();
    if (question.isEmpty() || isTooLong(question) || awaitsAnswer() || state_ != State::Result
        || !onSubmitFollowUp) {
        return false;
    }
    // Before the callback, which redraws the panel: the draft counts as sent from here on.
    setHasUnsentText(false);
    onSubmitFollowUp(question);
    return true;
}

} // namespace vellumo
