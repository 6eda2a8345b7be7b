// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlDevice.h"

#include "platform/wayland/client/WaylandConnection.h"
#include <algorithm>
#include <utility>

namespace vellumo {

namespace {

constexpr qsizetype maxTypes = 257; ///< one more than a snapshot may have

const DataControlProtocol &wlrProtocol()
{
    static const DataControlProtocol protocol(
        "zwlr_data_control_manager_v1", "zwlr_data_control_device_v1",
        "zwlr_data_control_source_v1", "zwlr_data_control_offer_v1", 2);
    return protocol;
}

const DataControlProtocol &extProtocol()
{
    static const DataControlProtocol protocol(
        "ext_data_control_manager_v1", "ext_data_control_device_v1", "ext_data_control_source_v1",
        "ext_data_control_offer_v1", 1);
    return protocol;
}

DataControlDevice *selfOf(void *data)
{
    return static_cast<DataControlDevice *>(data);
}

} // namespace

DataControlDevice::DataControlDevice(WaylandConnection &connection, Changed onClipboardChange,
                                     Changed onPrimaryChange)
    : connection_(connection)
    , onClipboardChange_(std::move(onClipboardChange))
    , onPrimaryChange_(std::move(onPrimaryChange))
{
    connection_.whenAnswered([this] { bind(); });
}

DataControlDevice::~DataControlDevice()
{
    for (const DataOffer &offer : std::as_const(offers_)) {
        wl_proxy_destroy(offer.proxy);
    }
    for (wl_proxy *proxy : {device_, manager_, seat_}) {
        if (proxy != nullptr) {
            wl_proxy_destroy(proxy); // the server's objects end with the connection
        }
    }
}

void DataControlDevice::bind()
{
    const auto isOfferedBy = [this](const DataControlProtocol &protocol) {
        return connection_.version(protocol.manager.name)
            >= static_cast<uint32_t>(protocol.manager.version);
    };
    const bool isExt = isOfferedBy(extProtocol());
    if (connection_.version(wl_seat_interface.name) == 0
        || (!isExt && !isOfferedBy(wlrProtocol()))) {
        return;
    }
    protocol_ = isExt ? &extProtocol() : &wlrProtocol();
    const auto version = static_cast<uint32_t>(protocol_->manager.version);
    seat_ = connection_.bind(wl_seat_interface, 1);
    manager_ = connection_.bind(protocol_->manager, version);
    device_ = wl_proxy_marshal_flags(manager_, DataControlProtocol::GetDataDevice,
                                     &protocol_->device, version, 0, nullptr, seat_);
    listen<&onDataOffer, &onSelection, &onFinished, &onPrimarySelection>(device_, this);
    connection_.whenAnswered([this] { isStarted_ = true; });
}

bool DataControlDevice::isOffered() const
{
    return device_ != nullptr && !isFinished_ && !connection_.isLost();
}

wl_proxy *DataControlDevice::makeSource(const QList<QByteArray> &types, wl_event_queue *queue)
{
    const uint32_t version = wl_proxy_get_version(manager_);
    auto *manager = static_cast<wl_proxy *>(wl_proxy_create_wrapper(manager_));
    wl_proxy_set_queue(manager, queue); // new objects inherit it
    wl_proxy *source = wl_proxy_marshal_flags(manager, DataControlProtocol::CreateDataSource,
                                              &protocol_->source, version, 0, nullptr);
    wl_proxy_wrapper_destroy(manager);
    for (const QByteArray &type : types) {
        wl_proxy_marshal_flags(source, DataControlProtocol::OfferType, nullptr, version, 0,
                               type.constData());
    }
    return source;
}

void DataControlDevice::setClipboard(wl_proxy *source)
{
    wl_proxy_marshal_flags(device_, DataControlProtocol::SetSelection, nullptr,
                           wl_proxy_get_version(device_), 0, source);
}

void DataControlDevice::drop(wl_proxy *offer)
{
    const auto dropped = std::ranges::find(offers_, offer, &DataOffer::proxy);
    if (offer == nullptr || dropped == offers_.end()) {
        return;
    }
    offers_.erase(dropped);
    wl_proxy_marshal_flags(offer, DataControlProtocol::DestroyOffer, nullptr,
                           wl_proxy_get_version(offer), WL_MARSHAL_FLAG_DESTROY);
}

const DataOffer *DataControlDevice::find(const wl_proxy *offer) const
{
    const auto found = std::ranges::find(offers_, offer, &DataOffer::proxy);
    return offer == nullptr || found == offers_.end() || !isOffered() ? nullptr : &*found;
}

void DataControlDevice::onDataOffer(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    selfOf(data)->offers_.append(DataOffer{offer, {}});
    listen<&onOfferType>(offer, data);
}

void DataControlDevice::onOfferType(void *data, wl_proxy *offer, const char *type)
{
    auto &offers = selfOf(data)->offers_;
    const auto announced = std::ranges::find(offers, offer, &DataOffer::proxy);
    if (announced != offers.end() && announced->types.size() < maxTypes
        && !announced->types.contains(type)) {
        announced->types.append(type);
    }
}

void DataControlDevice::onSelection(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    DataControlDevice &self = *selfOf(data);
    self.drop(std::exchange(self.clipboard_, offer));
    self.onClipboardChange_();
}

void DataControlDevice::onPrimarySelection(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    DataControlDevice &self = *selfOf(data);
    self.drop(std::exchange(self.primary_, offer));
    self.onPrimaryChange_();
}

void DataControlDevice::onFinished(void *data, wl_proxy * /*device*/)
{
    selfOf(data)->isFinished_ = true;
}

} // namespace vellumo
