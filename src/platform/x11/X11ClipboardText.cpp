// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11ClipboardText.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionReader.h"
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// A paste that takes longer is of no use to the user.
constexpr auto readingTime = 2s;

QString readText(const QByteArray &display, const QByteArray &selection)
{
    X11Problems problems;
    problems.muteLoss();
    X11Connection connection(problems, display);
    X11SelectionReader reader(connection, connection.atom(selection), QDeadlineTimer(readingTime));
    return reader.text().value_or(QString());
}

} // namespace

X11ClipboardText::~X11ClipboardText()
{
    if (thread_) {
        thread_->wait();
    }
}

void X11ClipboardText::read(Source source, QObject &context,
                            std::function<void(const QString &)> done)
{
    if (thread_ && !thread_->isFinished()) {
        return;
    }
    if (thread_) {
        thread_->wait();
    }
    const auto text = std::make_shared<QString>();
    const auto selection = source == Source::Clipboard ? "CLIPBOARD"_ba : "PRIMARY"_ba;
    thread_.reset(QThread::create(
        [display = display_, selection, text] { *text = readText(display, selection); }));
    QObject::connect(thread_.get(), &QThread::finished, &context,
                     [text, done = std::move(done)] { done(*text); });
    thread_->start();
}

} // namespace vellumo
