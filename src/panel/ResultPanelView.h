// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "panel/IslandContent.h"
#include "panel/ThreadModel.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <optional>

namespace vellumo {

/// View model of the panel's window: its content, and the user's actions. Drawn by the QML file of
/// the same name. One object serves all presentations of the window. All texts are plain and of
/// bounded length. Main thread only.
class ResultPanelView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(ResultPanelModel)
    QML_UNCREATABLE("made by the panel's controller")
    Q_PROPERTY(State state READ state NOTIFY contentChanged)
    Q_PROPERTY(QString contextName READ contextName NOTIFY contentChanged)
    Q_PROPERTY(QString sourceText READ sourceText NOTIFY contentChanged)
    Q_PROPERTY(QString translation READ translation NOTIFY contentChanged)
    Q_PROPERTY(QString explanation READ explanation NOTIFY contentChanged)
    Q_PROPERTY(QObject *thread READ thread CONSTANT)
    Q_PROPERTY(QString latestText READ latestText NOTIFY contentChanged)
    Q_PROPERTY(bool awaitsAnswer READ awaitsAnswer NOTIFY contentChanged)
    Q_PROPERTY(bool offersPermission READ offersPermission NOTIFY contentChanged)
    Q_PROPERTY(bool isSample READ isSample NOTIFY contentChanged)
    Q_PROPERTY(bool offersService READ offersService NOTIFY contentChanged)
    Q_PROPERTY(bool leadsToService READ leadsToService NOTIFY contentChanged)
    Q_PROPERTY(bool isForAFault READ isForAFault NOTIFY contentChanged)
    Q_PROPERTY(bool offersHolding READ offersHolding NOTIFY contentChanged)
    Q_PROPERTY(QString reason READ reason NOTIFY contentChanged)
    Q_PROPERTY(bool offersRetry READ offersRetry NOTIFY contentChanged)
    Q_PROPERTY(bool offersCopy READ offersCopy NOTIFY contentChanged)
    Q_PROPERTY(bool offersNote READ offersNote NOTIFY contentChanged)
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)
    Q_PROPERTY(qreal topInset READ topInset NOTIFY limitsChanged)
    Q_PROPERTY(qreal maximumHeight READ maximumHeight NOTIFY limitsChanged)
    Q_PROPERTY(
        bool hasUnsentText READ hasUnsentText WRITE setHasUnsentText NOTIFY unsentTextChanged)

public:
    enum class State : quint8 { Loading, Result, Error, Demo };
    Q_ENUM(State)

    using QObject::QObject;

    /// Called when the user closes the panel.
    std::function<void()> onClose;
    /// Called with a question that is not blank, while no answer is pending.
    std::function<void(const QString &question)> onSubmitFollowUp;
    /// Returns the reason of a failure in the user's language. To be set before the first failure.
    std::function<QString(const ExplanationFailure &failure)> describeFailure;

    // called by the controller

    enum class Drawing : quint8 {
        Fresh, ///< a new presentation: resets draft, scroll position and focus
        Redraw, ///< the same presentation: keeps them
    };
    void show(const IslandContent &content, const std::optional<ReadingContext> &context,
              Drawing drawing);
    void setContext(const std::optional<ReadingContext> &context);
    /// In device-independent units, like the heights below.
    void setLimits(qreal topInset, qreal maximumHeight);
    void setOffersPermission(bool offers);
    void setOffersService(bool offers);
    /// `leadsToService`: the mark opens the service settings. `forAFault`: the sample replaces a
    /// service whose configuration has a mistake.
    void setIsSample(bool sample, bool leadsToService, bool forAFault);
    /// Whether holding the second tap gives the panel the keyboard; announced by show().
    void setOffersHolding(bool offers) { offersHolding_ = offers; }
    void setShown(bool shown);

    /// Returns the height that shows everything without scrolling; valid when show() has returned.
    [[nodiscard]] qreal fittingHeight();
    void scrollToBottom() { Q_EMIT scrollToBottomRequested(); }
    void focusFollowUpField() { Q_EMIT focusRequested(); }
    /// Announces the latest explanation or answer to screen readers.
    void announceLatest() { Q_EMIT announcementRequested(); }

    /// Returns whether the follow-up field has text that was not submitted, including text in
    /// composition.
    [[nodiscard]] bool hasUnsentText() const { return hasUnsentText_; }

    // called by the view

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] QString contextName() const { return contextName_; }
    [[nodiscard]] QString sourceText() const { return sourceText_; }
    [[nodiscard]] QString translation() const { return translation_; }
    [[nodiscard]] QString explanation() const { return explanation_; }
    [[nodiscard]] QAbstractListModel *thread() { return &thread_; }
    /// Returns the announcement for screen readers: the last answer, or what is shown instead.
    [[nodiscard]] QString latestText() const;
    [[nodiscard]] bool awaitsAnswer() const { return thread_.hasPendingRow(); }
    [[nodiscard]] bool offersPermission() const { return offersPermission_; }
    [[nodiscard]] bool isSample() const { return isSample_; }
    [[nodiscard]] bool offersService() const { return offersService_; }
    [[nodiscard]] bool leadsToService() const { return leadsToService_; }
    [[nodiscard]] bool isForAFault() const { return isForAFault_; }
    [[nodiscard]] bool offersHolding() const { return offersHolding_; }
    /// Returns why there is no explanation, or no last answer; empty unless one failed.
    [[nodiscard]] QString reason() const;
    [[nodiscard]] bool offersRetry() const { return latestFailure().has_value(); }
    [[nodiscard]] bool offersCopy() const;
    /// Returns whether a note is kept of what is shown.
    [[nodiscard]] bool offersNote() const;
    [[nodiscard]] bool isShown() const { return isShown_; }
    [[nodiscard]] qreal topInset() const { return topInset_; }
    [[nodiscard]] qreal maximumHeight() const { return maximumHeight_; }
    void setHasUnsentText(bool unsent);

    Q_INVOKABLE void setFittingHeight(qreal height) { fittingHeight_ = height; }
    Q_INVOKABLE void close();
    Q_INVOKABLE void allowAccessibility();
    Q_INVOKABLE void openServiceSettings();
    Q_INVOKABLE void retry();
    /// Copies the last answer, or the explanation with its translation.
    Q_INVOKABLE void copy();
    Q_INVOKABLE void openNote();
    /// Returns whether the draft is longer than a question may be.
    [[nodiscard]] Q_INVOKABLE bool isTooLong(const QString &draft) const;
    /// Submits the draft. Returns false if it was rejected and must be kept.
    Q_INVOKABLE bool submitFollowUp(const QString &draft);

Q_SIGNALS:
    void accessibilityRequested();
    void serviceSettingsRequested();
    void retryRequested();
    void copyRequested(const QString &text);
    void noteRequested();
    void contentChanged();
    void limitsChanged();
    void shownChanged();
    void unsentTextChanged();
    void freshlyPresented();
    /// Emitted by fittingHeight(); the handler must call setFittingHeight().
    void fittingHeightRequested();
    void scrollToBottomRequested();
    void focusRequested();
    void announcementRequested();

private:
    void take(const IslandContent &content);
    [[nodiscard]] std::optional<ExplanationFailure> latestFailure() const;

    State state_ = State::Loading;
    QString contextName_;
    QString sourceText_;
    QString translation_;
    QString explanation_;
    std::optional<ExplanationFailure> failure_; ///< of the explanation
    ThreadModel thread_;
    qreal topInset_ = 0;
    qreal maximumHeight_ = 0;
    qreal fittingHeight_ = 0;
    bool offersPermission_ = false;
    bool isSample_ = false;
    bool offersService_ = false;
    bool leadsToService_ = false;
    bool isForAFault_ = false;
    bool offersHolding_ = false;
    bool isShown_ = false;
    bool hasUnsentText_ = false;
};

} // namespace vellumo
