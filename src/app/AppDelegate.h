// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <memory>

class QApplication;

namespace vellumo {

class AIExplaining;
class AppConfig;
class Clock;

/// Builds every long-lived object once, wires them, and owns them until the process ends.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(QApplication &application);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// Launches and runs until the program ends; answers its exit status.
    [[nodiscard]] int run();

private:
    struct Objects;

    void applicationDidFinishLaunching();
    [[nodiscard]] static std::unique_ptr<AIExplaining> makeAIService(const AppConfig &config,
                                                                     Clock &clock);
    void followDesktopLook();
    void watchPermission();

    QApplication &application_;
    std::unique_ptr<Objects> objects_; ///< absent before the launch
};

} // namespace vellumo
