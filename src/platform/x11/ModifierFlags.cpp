// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/ModifierFlags.h"

#include "platform/EventMonitoring.h"
#include <array>
#include <utility>
#include <xcb/xproto.h>

namespace vellumo {

quint32 modifierFlags(quint8 baseMods, quint8 latchedMods, quint8 lockedMods)
{
    static constexpr auto table = std::to_array<std::pair<int, quint32>>({
        {XCB_MOD_MASK_LOCK, ModifierFlag::CapsLock},
        {XCB_MOD_MASK_SHIFT, ModifierFlag::Shift},
        {XCB_MOD_MASK_CONTROL, ModifierFlag::Control},
        {XCB_MOD_MASK_1, ModifierFlag::Option},
        {XCB_MOD_MASK_4, ModifierFlag::Command},
        {XCB_MOD_MASK_5, ModifierFlag::AltGr},
    });
    const int mods = baseMods | latchedMods | (lockedMods & XCB_MOD_MASK_LOCK);
    quint32 flags = 0;
    for (const auto &[mask, flag] : table) {
        flags |= (mods & mask) != 0 ? flag : 0;
    }
    return flags;
}

quint32 modifierFlags(Qt::KeyboardModifiers modifiers)
{
    static constexpr auto table = std::to_array<std::pair<Qt::KeyboardModifier, quint32>>({
        {Qt::ShiftModifier, ModifierFlag::Shift},
        {Qt::ControlModifier, ModifierFlag::Control},
        {Qt::AltModifier, ModifierFlag::Option},
        {Qt::MetaModifier, ModifierFlag::Command},
        {Qt::GroupSwitchModifier, ModifierFlag::AltGr},
    });
    quint32 flags = 0;
    for (const auto &[modifier, flag] : table) {
        flags |= modifiers.testFlag(modifier) ? flag : 0;
    }
    return flags;
}

} // namespace vellumo
