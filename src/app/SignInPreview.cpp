// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SignInPreview.h"

#include "account/AuthService.h"
#include "app/Snapshot.h"
#include "ui/OrdinaryWindow.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace vellumo {

SignInPreview::SignInPreview(QQmlEngine &engine, AuthService &auth)
    : window_(makeOrdinaryWindow(
        engine, u"MainWindow/SignInPreview"_s,
        {{u"auth"_s, QVariant::fromValue(&auth)}, {u"texts"_s, QVariant::fromValue(&texts_)}}))
{
}

SignInPreview::~SignInPreview() = default;

void SignInPreview::writeSnapshots(const QString &folder, std::function<void()> done)
{
    writeView(true, folder, std::move(done));
}

void SignInPreview::writeView(bool english, const QString &folder, std::function<void()> done)
{
    english_ = english;
    texts_.refresh();
    if (window_) {
        window_->show();
    }
    QTimer::singleShot(snapshotDelay, this, [this, english, folder, done = std::move(done)] {
        writeSnapshot(window_.get(), folder, u"sign-in"_s, english);
        if (english) {
            writeView(false, folder, done);
        } else {
            done();
        }
    });
}

} // namespace vellumo
