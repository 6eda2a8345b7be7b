// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/windowing/FieldPasting.h"

#include "platform/ClipboardText.h"
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <optional>

namespace vellumo {

namespace {

std::optional<ClipboardText::Source> pastedSource(const QEvent &event)
{
    if (event.type() == QEvent::KeyPress) {
        const auto &key = static_cast<const QKeyEvent &>(event);
        if (!key.matches(QKeySequence::Paste)) {
            return std::nullopt;
        }
        const bool isPublished = key.key() == Qt::Key_Insert
            && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
        return isPublished ? ClipboardText::Source::Published : ClipboardText::Source::Clipboard;
    }
    if (event.type() == QEvent::MouseButtonRelease
        && static_cast<const QMouseEvent &>(event).button() == Qt::MiddleButton) {
        return ClipboardText::Source::Published;
    }
    return std::nullopt;
}

bool isEditable(const QObject &object)
{
    return (object.inherits("QQuickTextInput") || object.inherits("QQuickTextEdit"))
        && !object.property("readOnly").toBool();
}

/// Inserts the text as an input method does: it replaces the selection and respects the field's
/// limits.
void insert(QObject &field, const QString &text)
{
    if (!field.property("preeditText").toString().isEmpty()) {
        QGuiApplication::inputMethod()->commit();
    }
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&field, &event);
}

} // namespace

FieldPasting::FieldPasting(ClipboardText &text, QObject *parent) : QObject(parent), text_(text)
{
    qApp->installEventFilter(this);
}

bool FieldPasting::eventFilter(QObject *watched, QEvent *event)
{
    const auto source = pastedSource(*event);
    if (!source) {
        return false;
    }
    // The window gets a key before the field; its menu might paste and block.
    QObject *field = watched;
    if (event->type() == QEvent::KeyPress && watched->isWindowType()) {
        field = QGuiApplication::focusObject();
    }
    if (field == nullptr || !isEditable(*field)) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        QMetaObject::invokeMethod(field, "deselect"); // the published text stays the same
    }
    text_.read(*source, *field, [field](const QString &text) {
        if (!text.isEmpty()) {
            insert(*field, text);
        }
    });
    return true;
}

} // namespace vellumo
