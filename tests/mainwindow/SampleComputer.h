// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "computer/ComputerModel.h"
#include "explain/ForwardingExplainer.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include <QTemporaryDir>

namespace vellumo::test {

class SampleDesktop : public DesktopReporting {
public:
    bool isPoor = false; ///< lacks everything that is optional
    Keyring state = Keyring::Open;
    DesktopChange *change = nullptr;

    [[nodiscard]] bool isWayland() const override { return isPoor; }
    [[nodiscard]] bool hearsEveryTap() const override { return !isPoor; }
    [[nodiscard]] DesktopChange *tapSetting() const override { return nullptr; }
    [[nodiscard]] DesktopChange *extension() const override { return nullptr; }
    [[nodiscard]] DesktopChange *shortcut() const override { return change; }
    [[nodiscard]] SessionRoads roads() const override { return {.copiesEverywhere = !isPoor}; }
    [[nodiscard]] bool hasTray() const override { return !isPoor; }
    [[nodiscard]] bool hasCompositor() const override { return !isPoor; }
    [[nodiscard]] bool isConnected() const override { return !isPoor; }
    [[nodiscard]] bool isConnecting() const override { return false; }
    [[nodiscard]] Keyring keyring() const override { return state; }
    [[nodiscard]] QStringList browsers() const override
    {
        return isPoor ? QStringList() : QStringList{QStringLiteral("Firefox ESR")};
    }
    [[nodiscard]] QStringList browsersDecidingAtStart() const override
    {
        return isPoor ? QStringList{QStringLiteral("Chromium")} : QStringList();
    }
    void refresh() override { Q_EMIT changed(); }
};

class SampleChange : public DesktopChange {
public:
    State now = State::Possible;
    bool isWritable = true;

    [[nodiscard]] State state() const override { return now; }
    [[nodiscard]] QString keys() const override { return QStringLiteral("Super+Ctrl+E"); }
    void refresh() override { }
    void make() override { set(State::Made); }
    void undo() override { set(State::Possible); }

private:
    void set(State state)
    {
        if (isWritable) {
            now = state;
            Q_EMIT changed();
        }
        Q_EMIT finished(isWritable);
    }
};

class SampleLogin : public LoginStart {
public:
    State now = State::Off;
    bool isWritable = true;

    [[nodiscard]] State state() const override { return now; }
    [[nodiscard]] bool setOn(bool isOn) override
    {
        if (isWritable) {
            now = isOn ? State::On : State::Off;
        }
        return isWritable;
    }
};

/// The collaborators of the page of this computer.
struct SampleComputer {
    FakeDefaultsStore &defaults;
    FakeSecretItems &secrets;
    FakeHttpSession &http;
    FakeClock &clock;
    const BilingualText &texts;

    QTemporaryDir folder = {};
    FakeCalls calls = {};
    FakeAccessibility accessibility{calls};
    AppConfig config = AppConfig::load(folder.filePath(QStringLiteral("Info.json")),
                                       folder.filePath(QStringLiteral("built.json")));
    SampleDesktop desktop = {};
    SampleLogin login = {};
    // made with the page, so that a test can first set up an earlier run
    std::unique_ptr<ServiceSetup> setup = {};
    std::unique_ptr<ForwardingExplainer> explainer = {};

    /// Stores a service as an earlier run would have.
    void enterService() const
    {
        defaults.setValue(QStringLiteral("explanationService"), QStringLiteral("own"));
        defaults.setValue(QStringLiteral("serviceKeysFor"),
                          QStringList{QStringLiteral("https://api.openai.com")});
        secrets.values.insert(QStringLiteral("serviceKey:https://api.openai.com"), "sk-sample");
    }

    [[nodiscard]] std::unique_ptr<TapReach> makeTaps()
    {
        return std::make_unique<TapReach>(desktop, texts, defaults);
    }

    [[nodiscard]] std::unique_ptr<ComputerModel> make()
    {
        setup = std::make_unique<ServiceSetup>(
            ServiceSetup::Collaborators{config, defaults, secrets, http, clock});
        explainer = std::make_unique<ForwardingExplainer>(setup->makeService(), clock);
        QObject::connect(setup.get(), &ServiceSetup::serviceChanged, explainer.get(),
                         [this] { explainer->setService(setup->makeService()); });
        auto model = std::make_unique<ComputerModel>(ComputerModel::Collaborators{
            accessibility, *setup, *explainer, desktop, login, clock, texts, defaults});
        model->onWithdrawConsent = [this] { accessibility.withdrawConsent(); };
        return model;
    }
};

} // namespace vellumo::test
