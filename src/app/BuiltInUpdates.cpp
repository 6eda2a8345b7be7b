// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/BuiltInUpdates.h"

#include "app/ModuleFile.h"
#include "platform/Diagnostics.h"
#include "settings/AppConfig.h"
#include "settings/ConfigurationKeys.h"

using namespace Qt::StringLiterals;

namespace vellumo {

std::unique_ptr<UpdateController>
makeUpdateController(const AppConfig &config, const UpdateController::Collaborators &collaborators)
{
    const QString feed =
        config.value(configuration::updateFeedUrl).value_or(u"" VELLUMO_UPDATE_FEED_URL ""_s);
    const QString key = u"" VELLUMO_UPDATE_PUBLIC_KEY ""_s;
    if (feed.isEmpty() || key.isEmpty()) {
        return nullptr;
    }
    auto source = UpdateSource::from(feed, key);
    const auto running = DebianVersion::fromString(u"" VELLUMO_VERSION ""_s);
    if (!source || !running) {
        printDiagnostic(
            u"no updates — the feed must be an https address, the key one of Ed25519"_s);
        return nullptr;
    }
    SignatureCheck signatures(moduleFile(u"ed25519.so"_s));
    return std::make_unique<UpdateController>(std::move(*source), *running, std::move(signatures),
                                              collaborators);
}

} // namespace vellumo
