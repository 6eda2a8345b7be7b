// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Desktop.h"
#include "driver/Editor.h"
#include "driver/Program.h"
#include "driver/Waiting.h"
#include <QTest>

namespace vellumo::test {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

inline const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;

/// Base of the tests that drive the built program. Each function and each row gets a program with
/// separate settings and data, and an editor with the sentence. Neither is started yet.
class ProgramTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        const QString folder = u"%1-%2-%3"_s.arg(QLatin1StringView(metaObject()->className()),
                                                 QLatin1StringView(QTest::currentTestFunction()),
                                                 QLatin1StringView(QTest::currentDataTag()));
        vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder);
        editor_ = std::make_unique<Editor>(desktop_, sentence);
        prepare();
    }
    void cleanup()
    {
        if (QTest::currentTestFailed() && vellumo_->hasStarted())
            qWarning().noquote() << vellumo_->report();
        editor_.reset();
        vellumo_.reset();
    }

protected:
    /// Runs before each function, with the new program.
    virtual void prepare() { }

    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Editor> editor_;
};

} // namespace vellumo::test
