// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/RelatedObject.h"

namespace vellumo {

ObjectReference relatedObject(const ObjectReference &object, quint32 relation,
                              AtspiQuestion &question)
{
    const auto relations =
        question.send(object, Atspi::accessible, "GetRelationSet").value<QList<Relation>>();
    for (const Relation &each : relations.value_or(QList<Relation>())) {
        if (each.type == relation && !each.targets.isEmpty()) {
            const ObjectReference &target = each.targets.constFirst();
            return target.service == object.service ? target : ObjectReference();
        }
    }
    return {};
}

} // namespace vellumo
