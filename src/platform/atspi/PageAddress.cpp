// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/PageAddress.h"

#include "platform/atspi/EmbeddedPage.h"
#include "platform/atspi/Processes.h"
#include "platform/atspi/RelatedObject.h"

using namespace Qt::StringLiterals;

namespace vellumo {

std::optional<QString> pageAddressIn(const ObjectReference &frame, qint64 processIdentifier,
                                     AtspiQuestion &question)
{
    ObjectReference document = relatedObject(frame, Atspi::relationEmbeds, question);
    if (document.isNull() && hasDescendant(processIdentifier, "WebKitWebProces"_ba)) {
        document = embeddedPage(frame, processIdentifier, question);
    }
    if (document.isNull()) {
        return std::nullopt;
    }
    // Each browser engine has its own name for the attribute.
    auto asDocUrl =
        question.send(document, Atspi::document, "GetAttributeValue", {QStringLiteral("DocURL")});
    auto asUri =
        question.send(document, Atspi::document, "GetAttributeValue", {QStringLiteral("URI")});
    for (PendingAnswer *answer : {&asDocUrl, &asUri}) {
        auto address = answer->value<QString>();
        if (address && !address->isEmpty()) {
            return address;
        }
    }
    return std::nullopt;
}

} // namespace vellumo
