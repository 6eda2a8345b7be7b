// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/ConsentDialog.h"

#include "platform/Diagnostics.h"
#include "ui/BilingualText.h"
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace vellumo {

ConsentDialog::ConsentDialog(QQmlEngine &engine, BilingualText &texts, QObject *parent)
    : QObject(parent)
    , engine_(engine)
    , texts_(texts)
{
}

ConsentDialog::~ConsentDialog() = default;

void ConsentDialog::ask(std::function<void(bool)> answered)
{
    answered_ = std::move(answered);
    if (!isHeld_) {
        show();
    }
}

void ConsentDialog::hold()
{
    isHeld_ = true;
    if (window_) {
        window_->hide();
    }
}

void ConsentDialog::release(bool isStillWanted)
{
    isHeld_ = false;
    if (!isStillWanted) {
        closeWindow();
        answered_ = nullptr;
    } else if (answered_) {
        show();
    }
}

void ConsentDialog::show()
{
    if (!window_) {
        QQmlComponent component(&engine_, QUrl(u"qrc:/qt/qml/Vellumo/Ui/ConsentDialog.qml"_s));
        QObject *object = component.isReady()
            ? component.createWithInitialProperties({{u"texts"_s, QVariant::fromValue(&texts_)}})
            : nullptr;
        window_ = qobject_cast<QQuickWindow *>(object);
        if (!window_) {
            delete object;
            printDiagnostic(component.errorString());
            onAnswered(false);
            return;
        }
        QQmlEngine::setObjectOwnership(window_, QQmlEngine::CppOwnership);
        object->setParent(this); // deleted later, but never after us: it uses our texts
        connect(window_, SIGNAL(answered(bool)), this, SLOT(onAnswered(bool)));
        if (onWindowMade) {
            onWindowMade(*window_);
        }
    }
    window_->show();
    window_->raise();
    window_->requestActivate();
}

void ConsentDialog::closeWindow()
{
    if (window_) {
        window_->disconnect(this);
        window_->hide();
        window_->deleteLater();
        window_.clear();
    }
}

void ConsentDialog::onAnswered(bool allowed)
{
    closeWindow();
    if (const auto answered = std::exchange(answered_, nullptr)) {
        answered(allowed);
    }
}

} // namespace vellumo
