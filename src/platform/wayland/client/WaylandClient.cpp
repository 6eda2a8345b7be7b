// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The module's client: one connection for everything that the main thread asks the compositor.

#include "platform/wayland/client/DataControlClipboard.h"
#include "platform/wayland/client/DataControlDevice.h"
#include "platform/wayland/client/DataControlPrimary.h"
#include "platform/wayland/client/OfferReader.h"
#include "platform/wayland/client/SeatCopyKeys.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include "platform/wayland/client/WaylandConnection.h"
#include <QSocketNotifier>

namespace vellumo {

namespace {

class WaylandClient : public waylandClientModule::Client {
public:
    explicit WaylandClient(std::unique_ptr<WaylandConnection> connection)
        : connection_(std::move(connection))
        , notifier_(connection_->descriptor(), QSocketNotifier::Read)
        , device_(
              *connection_, [this] { clipboard_.noteChange(); }, [this] { primary_.noteChange(); })
        , primary_(*connection_, device_)
        , clipboard_(*connection_, device_)
        , keys_(*connection_)
    {
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] {
            connection_->readEvents();
            notifier_.setEnabled(!connection_->isLost());
        });
    }

    PrimarySelection &primarySelection() override { return primary_; }
    ManagedClipboard &clipboard() override { return clipboard_; }
    CopyKeys &copyKeys() override { return keys_; }
    std::optional<waylandClientModule::RequestedText>
    requestText(ClipboardText::Source source) override
    {
        connection_->readEvents();
        const DataOffer *offer =
            source == ClipboardText::Source::Clipboard ? device_.clipboard() : device_.primary();
        return offer == nullptr ? std::nullopt : vellumo::requestText(*connection_, *offer);
    }

private:
    std::unique_ptr<WaylandConnection> connection_;
    QSocketNotifier notifier_;
    DataControlDevice device_;
    DataControlPrimary primary_;
    DataControlClipboard clipboard_;
    SeatCopyKeys keys_;
};

} // namespace

} // namespace vellumo

extern "C" __attribute__((visibility("default"))) vellumo::waylandClientModule::Client *
vellumo_wayland_client_1()
{
    auto connection = vellumo::WaylandConnection::connect();
    return connection ? new vellumo::WaylandClient(std::move(connection)) : nullptr;
}
