// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "panel/ResultPanelController.h"

#include "panel/KeyablePanel.h"
#include "panel/PanelGeometry.h"
#include "ui/BilingualText.h"

#include <QMetaMethod>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr std::chrono::milliseconds growth(260);
constexpr std::chrono::milliseconds leavingTime(120);

/// Letters, digits and punctuation of both scripts, drawn once while the window is hidden: the
/// first use of each font takes longer than the whole presentation may.
IslandContent firstDrawing()
{
    const QString sample =
        u"The quick brown fox jumps over the lazy dog, 0123456789: “it’s” (a) "
        u"阅读时选中文字，这里给出解释。的一是在不了有和人这中大为上个国我以要他"_s;
    return IslandContent::result({sample, sample}, sample, {{sample, sample}});
}

} // namespace

ResultPanelController::ResultPanelController(FloatingWindows &windows, const Screens &screens,
                                             EventMonitoring &monitors, BilingualText &texts,
                                             QObject *parent)
    : QObject(parent)
    , windows_(windows)
    , screens_(screens)
    , texts_(texts)
    , view_(std::make_unique<ResultPanelView>())
    , dismissalMonitors_(monitors)
{
    view_->onClose = [this] { dismiss(); };
    view_->onSubmitFollowUp = [this](const QString &question) {
        if (!question.isEmpty() && onFollowUp) {
            onFollowUp(question);
        }
    };
    view_->describeFailure = [this](const ExplanationFailure &failure) {
        return describeFailure ? describeFailure(failure) : QString();
    };
    connect(view_.get(), &ResultPanelView::retryRequested, this, [this] {
        if (onRetry) {
            onRetry();
        }
    });
    connect(view_.get(), &ResultPanelView::copyRequested, this,
            &ResultPanelController::copyRequested);
    connect(view_.get(), &ResultPanelView::noteRequested, this,
            &ResultPanelController::noteRequested);
    connect(&screens_, &Screens::changed, this, &ResultPanelController::adaptToScreens);
    // The panel so that the settings window is not covered.
    connect(view_.get(), &ResultPanelView::accessibilityRequested, this, [this] {
        dismiss();
        Q_EMIT accessibilityRequested();
    });
    connect(view_.get(), &ResultPanelView::serviceSettingsRequested, this, [this] {
        dismiss();
        Q_EMIT serviceSettingsRequested();
    });
}

ResultPanelController::~ResultPanelController() = default;

void ResultPanelController::prepare()
{
    if (window_) {
        return;
    }
    view_->setLimits(0, panelGeometry::fallbackScreen.height);
    view_->show(firstDrawing(), {}, ResultPanelView::Drawing::Fresh);
    KeyablePanel style;
    style.title = "vellumo explanation";
    style.level = WindowLevel::Status;
    style.bottomCornerRadius = panelGeometry::bottomCornerRadius;
    window_ = windows_.createPanel(style,
                                   {QUrl(u"qrc:/qt/qml/Vellumo/Panel/ResultPanelView.qml"_s),
                                    {{u"view"_s, QVariant::fromValue(view_.get())},
                                     {u"texts"_s, QVariant::fromValue(&texts_)}}});
    connect(window_.get(), &FloatingPanel::closeRequested, this, [this] { dismiss(); });
    connect(window_.get(), &FloatingPanel::moved, this,
            &ResultPanelController::followWindowManager);
    view_->show(IslandContent::loading({}), {}, ResultPanelView::Drawing::Fresh);
}

bool ResultPanelController::isOnScreen() const
{
    return panel_ && panel_->isVisible();
}

void ResultPanelController::present(IslandContent content, std::optional<ReadingContext> context,
                                    std::function<void()> onDismiss)
{
    // The window stays mapped during a replacement, to avoid flicker, although the old presentation
    // has ended.
    const bool replaces = isOnScreen();
    while (panel_) {
        endPresentation(Leaving::MakeRoom);
    }
    prepare();

    onDismiss_ = std::move(onDismiss);
    currentContext_ = std::move(context);
    const std::optional<Screen> screen = activeScreen();
    applyLimits(screen);
    rememberConversation(content);
    describe(content);
    view_->setOffersHolding(canHoldOption && canHoldOption());
    view_->show(content, currentContext_, ResultPanelView::Drawing::Fresh);
    panelView_ = view_.get();

    const Rect frame =
        panelGeometry::frameOn(screen, panelGeometry::heightFor(view_->fittingHeight(), screen));
    const Rect old = window_->frame();
    if (replaces && old.x == frame.x && old.maxY() == frame.maxY()) {
        window_->animateFrame(frame, growth, {});
    } else {
        window_->setFrame(frame);
    }
    view_->setShown(true);
    window_->orderFrontRegardless();
    panel_ = window_.get();
    installMonitors();
    view_->announceLatest();
}

void ResultPanelController::dismiss()
{
    if (panel_) {
        endPresentation(Leaving::Hide);
        Q_EMIT closed();
    }
}

void ResultPanelController::endPresentation(Leaving leaving)
{
    dismissalMonitors_.stop();
    panel_.clear();
    panelView_.clear();
    if (leaving == Leaving::Hide) {
        window_->fadeOut(leavingTime);
        view_->setShown(false);
    }
    if (const auto onDismiss = std::exchange(onDismiss_, nullptr)) {
        onDismiss();
    }
}

void ResultPanelController::showError(const QString &message, ErrorHelp help,
                                      const std::optional<ExplanationFailure> &failure)
{
    present(IslandContent::error(message, help, failure), {}, [] {});
}

void ResultPanelController::showContext(const ReadingContext &context)
{
    if (panel_) {
        currentContext_ = context;
        view_->setContext(currentContext_);
    }
}

void ResultPanelController::rememberConversation(const IslandContent &content)
{
    baseResult_.reset();
    baseSourceText_.reset();
    thread_.clear();
    if (const auto *result = std::get_if<IslandContent::Result>(&content.value)) {
        baseResult_ = result->result;
        baseSourceText_ = result->sourceText;
        thread_ = result->thread;
    }
}

/// Updates what is shown with the content: the offer of help, the mark of a sample.
void ResultPanelController::describe(const IslandContent &content)
{
    const auto *result = std::get_if<IslandContent::Result>(&content.value);
    const ErrorHelp help = result ? result->help : ErrorHelp::None;
    const SampleAnswers samples = result ? result->samples : SampleAnswers::None;
    static const QMetaMethod request =
        QMetaMethod::fromSignal(&ResultPanelController::serviceSettingsRequested);
    const bool leadsToService = isSignalConnected(request);
    view_->setOffersPermission(help == ErrorHelp::Permission);
    view_->setOffersService(help == ErrorHelp::Service && leadsToService);
    view_->setIsSample(samples != SampleAnswers::None, leadsToService,
                       samples == SampleAnswers::Misconfigured);
}

void ResultPanelController::showFollowUpThinking(const QString &question)
{
    if (!baseResult_) {
        return;
    }
    thread_ << ThreadItem{question};
    redrawThread();
}

void ResultPanelController::showFollowUpAnswer(const QString &answer)
{
    fillLastRow({.answer = answer});
}

void ResultPanelController::showUnkeptFollowUpAnswer(const QString &answer)
{
    fillLastRow({.answer = answer, .kept = false});
}

void ResultPanelController::showFollowUpFailure(const QString &message,
                                                const ExplanationFailure &failure)
{
    fillLastRow({.answer = message, .failure = failure, .kept = false});
}

void ResultPanelController::showFollowUpRetry()
{
    if (baseResult_ && !thread_.isEmpty() && thread_.constLast().failure) {
        thread_.last() = {.question = thread_.constLast().question};
        redrawThread();
    }
}

/// Fills the last row and keeps its question.
void ResultPanelController::fillLastRow(const ThreadItem &filling)
{
    if (!baseResult_ || thread_.isEmpty()) {
        return;
    }
    const QString question = thread_.constLast().question;
    thread_.last() = filling;
    thread_.last().question = question;
    redrawThread();
    if (panelView_) {
        panelView_->announceLatest();
    }
}

void ResultPanelController::redrawThread()
{
    swapContent(IslandContent::result(*baseResult_, baseSourceText_, thread_));
    if (panelView_) {
        panelView_->scrollToBottom();
        panelView_->focusFollowUpField();
    }
}

void ResultPanelController::swapContent(const IslandContent &content)
{
    if (!panel_) {
        return;
    }
    const std::optional<Screen> own = panelScreen();
    const std::optional<Screen> screen = own ? topBar_.removedFrom(*own) : activeScreen();
    applyLimits(screen);
    view_->show(content, currentContext_, ResultPanelView::Drawing::Redraw);
    const double height = panelGeometry::heightFor(view_->fittingHeight(), screen);
    panel_->animateFrame(panelGeometry::resized(panel_->frame(), height), growth, {});
}

void ResultPanelController::applyLimits(const std::optional<Screen> &screen)
{
    view_->setLimits(panelGeometry::topInset(screen), panelGeometry::maximumHeight(screen));
}

/// Returns the screen that holds the panel's top edge.
std::optional<Screen> ResultPanelController::panelScreen() const
{
    return panelGeometry::screenAt(panelGeometry::anchor(panel_->frame()), screens_.screens(),
                                   std::nullopt);
}

std::optional<Screen> ResultPanelController::activeScreen() const
{
    const std::optional<Screen> screen = panelGeometry::screenAt(
        screens_.activeLocation(), screens_.screens(), screens_.mainScreen());
    return screen ? std::optional(topBar_.removedFrom(*screen)) : std::nullopt;
}

/// Keeps below the bar of a window manager that moves the panel there, now and from the start of
/// the next presentation.
void ResultPanelController::followWindowManager()
{
    const std::optional<Screen> screen = panel_ ? panelScreen() : std::nullopt;
    if (!screen) {
        return;
    }
    const Rect frame = panel_->frame();
    const panelGeometry::TopBar found{screen->frame, screen->frame.maxY() - frame.maxY()};
    if (found.height > 0 && found != topBar_) {
        topBar_ = found;
        const Screen below = topBar_.removedFrom(*screen);
        applyLimits(below);
        panel_->setFrame(
            panelGeometry::resized(frame, panelGeometry::heightFor(view_->fittingHeight(), below)));
    }
}

/// Moves the panel to the top of its screen, or of the one where the user works if its own is gone.
void ResultPanelController::adaptToScreens()
{
    if (!panel_) {
        return;
    }
    const std::optional<Screen> own = panelScreen();
    const std::optional<Screen> screen = own ? topBar_.removedFrom(*own) : activeScreen();
    applyLimits(screen);
    panel_->setFrame(
        panelGeometry::frameOn(screen, panelGeometry::heightFor(view_->fittingHeight(), screen)));
}

void ResultPanelController::focusPanel()
{
    if (panel_) {
        panel_->makeKey();
        view_->focusFollowUpField();
    }
}

void ResultPanelController::installMonitors()
{
    dismissalMonitors_.start({.escaped = [this] { dismiss(); },
                              .acted =
                                  [this](EventType type) {
                                      if (type != EventType::KeyDown) {
                                          dismissIfPointerIsOutsidePanel();
                                      }
                                  }});
}

void ResultPanelController::dismissIfPointerIsOutsidePanel()
{
    if (panel_ && panelView_ && !panelView_->hasUnsentText()
        && !panel_->frame().contains(screens_.pointerLocation())) {
        dismiss();
    }
}

} // namespace vellumo
