// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/Alert.h"

#include "platform/Diagnostics.h"
#include <QQmlComponent>
#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace vellumo {

Alert::Alert(QQmlEngine &engine, QObject *parent) : QObject(parent), engine_(engine) { }

Alert::~Alert()
{
    delete window_;
}

void Alert::show(const Text &text)
{
    if (!window_) {
        QQmlComponent component(&engine_, QUrl(u"qrc:/qt/qml/Vellumo/Ui/Alert.qml"_s));
        QObject *object = component.isReady()
            ? component.createWithInitialProperties({{u"message"_s, text.message},
                                                     {u"informativeText"_s, text.informativeText},
                                                     {u"button"_s, text.button}})
            : nullptr;
        window_ = qobject_cast<QQuickWindow *>(object);
        if (!window_) {
            delete object;
            printDiagnostic(component.errorString());
            return;
        }
        QQmlEngine::setObjectOwnership(window_, QQmlEngine::CppOwnership);
        connect(window_, SIGNAL(dismissed()), this, SLOT(onDismissed()));
        if (onWindowMade) {
            onWindowMade(*window_);
        }
    }
    window_->show();
    window_->raise();
    window_->requestActivate();
}

void Alert::onDismissed()
{
    if (window_) {
        window_->disconnect(this);
        window_->hide();
        window_->deleteLater();
        window_.clear();
    }
}

} // namespace vellumo
