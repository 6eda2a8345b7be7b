// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "panel/PanelGeometry.h"
#include "panel/ResultPanelControlling.h"
#include "panel/ResultPanelView.h"
#include "platform/DismissalMonitors.h"
#include "platform/FloatingWindows.h"
#include "platform/Screens.h"
#include <QObject>
#include <QPointer>
#include <memory>

namespace vellumo {

class BilingualText;

/// The panel at the top edge of the screen. Shows a loading state, a result with its follow-ups, a
/// demonstration or an error, and closes when the user clicks or scrolls elsewhere.
///
/// One window is created in advance and reused. While it is hidden, there is no panel for callers.
class ResultPanelController final : public QObject, public ResultPanelControlling {
    Q_OBJECT

public:
    /// All collaborators must outlive the controller.
    ResultPanelController(FloatingWindows &windows, const Screens &screens,
                          EventMonitoring &monitors, BilingualText &texts,
                          QObject *parent = nullptr);
    ~ResultPanelController() override;

    /// Returns whether holding the second tap of Option calls focusPanel(), which the panel then
    /// says. It does not if this is empty.
    std::function<bool()> canHoldOption;

    /// Returns the reason of a failure in the user's language. Without it, none is shown.
    std::function<QString(const ExplanationFailure &failure)> describeFailure;

    /// Creates the hidden window, so that the first presentation is quick. Takes some ten
    /// milliseconds: call it when the program is idle. present() calls it if needed.
    void prepare();

    /// Gives the keyboard to the panel on screen, to its follow-up field if it has one.
    void focusPanel();

    [[nodiscard]] bool isOnScreen() const override;
    void present(IslandContent content, std::optional<ReadingContext> context,
                 std::function<void()> onDismiss) override;
    void dismiss() override;
    void showError(const QString &message, ErrorHelp help,
                   const std::optional<ExplanationFailure> &failure) override;
    void showContext(const ReadingContext &context) override;
    void showFollowUpThinking(const QString &question) override;
    void showFollowUpAnswer(const QString &answer) override;
    void showUnkeptFollowUpAnswer(const QString &answer) override;
    void showFollowUpFailure(const QString &message, const ExplanationFailure &failure) override;
    void showFollowUpRetry() override;

Q_SIGNALS:
    /// Emitted for ErrorHelp::Permission.
    void accessibilityRequested();
    /// Emitted for ErrorHelp::Service and the mark of a sample, which offer the action only while a
    /// slot is connected.
    void serviceSettingsRequested();
    /// Emitted when the user copies an answer.
    void copyRequested(const QString &text);
    /// Emitted when the user asks for the note of what is shown, which is kept once the panel
    /// closes.
    void noteRequested();
    /// Emitted when the panel was dismissed, after its onDismiss.
    void closed();

private:
    enum class Leaving : quint8 { Hide, MakeRoom };

    void endPresentation(Leaving leaving);
    void rememberConversation(const IslandContent &content);
    void describe(const IslandContent &content);
    void fillLastRow(const ThreadItem &filling);
    void swapContent(const IslandContent &content);
    void redrawThread();
    void applyLimits(const std::optional<Screen> &screen);
    void installMonitors();
    void dismissIfPointerIsOutsidePanel();
    [[nodiscard]] std::optional<Screen> panelScreen() const;
    [[nodiscard]] std::optional<Screen> activeScreen() const;
    void followWindowManager();
    void adaptToScreens();

    FloatingWindows &windows_;
    const Screens &screens_;
    BilingualText &texts_;

    std::unique_ptr<ResultPanelView> view_; ///< declared before the window, which uses it
    std::unique_ptr<FloatingPanel> window_;

    QPointer<FloatingPanel> panel_; ///< the window while it is on screen, otherwise null
    QPointer<ResultPanelView> panelView_; ///< the view while it is on screen, otherwise null
    std::function<void()> onDismiss_;
    DismissalMonitors dismissalMonitors_; ///< while it is on screen
    panelGeometry::TopBar topBar_;
    std::optional<ReadingContext> currentContext_;
    std::optional<ExplanationResult> baseResult_;
    std::optional<QString> baseSourceText_;
    QList<ThreadItem> thread_;
};

} // namespace vellumo
