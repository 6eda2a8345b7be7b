// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SignInPreview.h"

#include "platform/Diagnostics.h"
#include "ui/OrdinaryWindow.h"

#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {
constexpr auto viewSettleTime = 400ms; // longer than any animation
}

SignInPreview::SignInPreview(QQmlEngine &engine,
                             const MainWindowModel::Collaborators &collaborators)
    : model_(collaborators)
    , window_(makeOrdinaryWindow(
          engine, u"MainWindow/SignInPreview"_s,
          {{u"main"_s, QVariant::fromValue(&model_)}, {u"texts"_s, QVariant::fromValue(&texts_)}}))
{
}

SignInPreview::~SignInPreview() = default;

void SignInPreview::writeSnapshots(const QString &folder, std::function<void()> done)
{
    QDir().mkpath(folder);
    writeView(true, folder, std::move(done));
}

void SignInPreview::writeView(bool english, const QString &folder, std::function<void()> done)
{
    english_ = english;
    texts_.refresh();
    if (window_) {
        window_->show();
    }
    QTimer::singleShot(viewSettleTime, this, [this, english, folder, done = std::move(done)] {
        const QString path = u"%1/sign-in-%2.png"_s.arg(folder, english ? u"en"_s : u"zh"_s);
        if (!window_ || !window_->grabWindow().save(path)) {
            printDiagnostic(u"could not write a picture"_s);
        }
        if (english) {
            writeView(false, folder, done);
        } else {
            done();
        }
    });
}

} // namespace vellumo
