// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/Keyboards.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/inotify.h>

namespace vellumo::taps {

namespace {

/// New devices become readable a moment later, when their permissions are set.
constexpr std::uint32_t folderChanges = IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_DELETE;

constexpr std::size_t eventsAtOnce = 64;

bool isEventDevice(const std::string &name)
{
    return name.starts_with("event");
}

} // namespace

Keyboards::Keyboards(sd_event *loop, std::string folder, const EventDevices &devices,
                     Handlers handlers)
    : loop_(loop)
    , folder_(std::move(folder))
    , devices_(devices)
    , handlers_(std::move(handlers))
{
}

void Keyboards::setOpen(bool isOpen)
{
    if (isOpen == changes_.isOpen()) {
        return;
    }
    if (isOpen) {
        watchFolder(); // first, so that no device is missed
        readFolder();
        return;
    }
    changesSource_ = nullptr;
    changes_ = {};
    while (!keyboards_.empty()) {
        close(std::string(keyboards_.begin()->first));
    }
}

void Keyboards::watchFolder()
{
    changes_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!changes_.isOpen()
        || ::inotify_add_watch(changes_.number(), folder_.c_str(), folderChanges) < 0) {
        return;
    }
    sd_event_source *source = nullptr;
    sd_event_add_io(
        loop_, &source, changes_.number(), EPOLLIN,
        [](sd_event_source *, int, std::uint32_t, void *self) {
            static_cast<Keyboards *>(self)->readChanges();
            return 0;
        },
        this);
    changesSource_.reset(source);
}

void Keyboards::readFolder()
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(::opendir(folder_.c_str()), ::closedir);
    while (const dirent *entry = folder ? ::readdir(folder.get()) : nullptr) {
        open(entry->d_name);
    }
}

void Keyboards::readChanges()
{
    alignas(inotify_event) std::array<char, 4096> buffer{};
    const auto length = ::read(changes_.number(), buffer.data(), buffer.size());
    inotify_event change{};
    for (ssize_t at = 0; at < length; at += static_cast<ssize_t>(sizeof(change) + change.len)) {
        std::memcpy(&change, buffer.data() + at, sizeof(change));
        if (change.len == 0) {
            continue; // about the folder itself, or more than the queue holds
        }
        const std::string name(buffer.data() + at + sizeof(change));
        if ((change.mask & IN_DELETE) != 0) {
            close(name);
        } else {
            open(name);
        }
    }
}

void Keyboards::open(const std::string &name)
{
    if (!isEventDevice(name) || keyboards_.contains(name)) {
        return;
    }
    const std::string path = folder_ + '/' + name;
    Descriptor device(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!device.isOpen() || !devices_.isKeyboard(device.number())) {
        return;
    }
    auto keyboard = std::make_unique<Keyboard>(*this, name, ++lastNumber_, std::move(device));
    sd_event_source *source = nullptr;
    sd_event_add_io(
        loop_, &source, keyboard->device.number(), EPOLLIN,
        [](sd_event_source *, int, std::uint32_t, void *opened) {
            auto &self = *static_cast<Keyboard *>(opened);
            self.owner.read(self);
            return 0;
        },
        keyboard.get());
    keyboard->source.reset(source);
    if (source == nullptr) {
        return;
    }
    const auto held = devices_.heldKeys(keyboard->device.number());
    handlers_.onReset(keyboard->number, held);
    keyboards_.emplace(name, std::move(keyboard));
    handlers_.onChange();
}

void Keyboards::close(const std::string &name)
{
    if (const auto closed = keyboards_.extract(name)) {
        handlers_.onReset(closed.mapped()->number, {});
        handlers_.onChange();
    }
}

void Keyboards::read(Keyboard &keyboard)
{
    std::array<input_event, eventsAtOnce> events{};
    const auto length = ::read(keyboard.device.number(), events.data(), sizeof(events));
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    constexpr auto eventSize = static_cast<ssize_t>(sizeof(input_event));
    if (length <= 0 || length % eventSize != 0) { // unplugged
        close(std::string(keyboard.name));
        return;
    }
    const auto count = static_cast<std::size_t>(length / eventSize);
    for (const input_event &event : std::span(events).first(count)) {
        handle(keyboard, event);
    }
    ::explicit_bzero(events.data(), sizeof(events));
}

void Keyboards::handle(Keyboard &keyboard, const input_event &event)
{
    if (event.type == EV_SYN && event.code == SYN_DROPPED) {
        keyboard.isDropping = true;
    } else if (keyboard.isDropping) {
        if (event.type == EV_SYN && event.code == SYN_REPORT) {
            keyboard.isDropping = false;
            const auto held = devices_.heldKeys(keyboard.device.number());
            handlers_.onReset(keyboard.number, held);
        }
    } else if (event.type == EV_KEY) {
        handlers_.onKey(keyboard.number, event.code, event.value);
    }
}

} // namespace vellumo::taps
