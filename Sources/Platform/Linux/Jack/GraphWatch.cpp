#include "Platform/Linux/Jack/GraphWatch.h"

#include <jack/metadata.h>

#include <utility>

namespace tavro::jack {

GraphNotices::GraphNotices(MainActor& mainActor, std::function<void()> onChange, std::function<void()> onLoss)
    : mainActor_(mainActor), onChange_(std::move(onChange)), onLoss_(std::move(onLoss)) {
    line_->listener_ = this;
}

GraphNotices::~GraphNotices() {
    const std::lock_guard lock(line_->mutex_);
    line_->listener_ = nullptr;
}

void GraphNotices::Line::announceChange() {
    const std::lock_guard lock(mutex_);
    if (!std::exchange(isAnnounced_, true)) {
        post(&GraphNotices::tellChange);
    }
}

void GraphNotices::Line::announceLoss() {
    const std::lock_guard lock(mutex_);
    post(&GraphNotices::tellLoss);
}

void GraphNotices::Line::post(void (GraphNotices::*notice)()) {
    // The listener cannot go while this is locked, nor its actor.
    if (listener_ == nullptr) {
        return;
    }
    listener_->mainActor_.post([line = shared_from_this(), notice] {
        std::unique_lock lock(line->mutex_);
        if (auto* const listener = line->listener_; listener != nullptr) {
            // It goes by this thread alone.
            lock.unlock();
            (listener->*notice)();
        }
    });
}

void GraphNotices::tellChange() {
    {
        // Before the call: a change that comes while it runs needs another one.
        const std::lock_guard lock(line_->mutex_);
        line_->isAnnounced_ = false;
    }
    const auto onChange = onChange_;
    onChange();
}

void GraphNotices::tellLoss() {
    const auto onLoss = onLoss_;
    onLoss();
}

GraphWatch::GraphWatch(jack_client_t& client, std::shared_ptr<GraphNotices::Line> line)
    : line_(std::move(line)) {
    jack_on_shutdown(&client, [](void* self) { static_cast<GraphWatch*>(self)->announceLoss(); }, this);
    jack_set_client_registration_callback(
        &client,
        [](const char*, int, void* self) { static_cast<GraphWatch*>(self)->line_->announceChange(); }, this);
    jack_set_port_registration_callback(
        &client,
        [](jack_port_id_t, int, void* self) { static_cast<GraphWatch*>(self)->line_->announceChange(); },
        this);
    jack_set_port_rename_callback(
        &client,
        [](jack_port_id_t, const char*, const char*, void* self) {
            static_cast<GraphWatch*>(self)->line_->announceChange();
        },
        this);
    jack_set_port_connect_callback(
        &client,
        [](jack_port_id_t, jack_port_id_t, int, void* self) {
            static_cast<GraphWatch*>(self)->line_->announceChange();
        },
        this);
    // The server tells of a connection when it was asked for it, and puts it in force between two periods, on
    // a busy machine some periods later. Who looks before that sees the old graph; this tells of the new one.
    jack_set_graph_order_callback(
        &client,
        [](void* self) {
            static_cast<GraphWatch*>(self)->line_->announceChange();
            return 0;
        },
        this);
    jack_set_property_change_callback(
        &client,
        [](jack_uuid_t, const char*, jack_property_change_t, void* self) {
            static_cast<GraphWatch*>(self)->line_->announceChange();
        },
        this);
    jack_set_buffer_size_callback(
        &client,
        [](jack_nframes_t, void* self) {
            static_cast<GraphWatch*>(self)->line_->announceChange();
            return 0;
        },
        this);
}

void GraphWatch::announceLoss() {
    if (isServerThere_.exchange(false)) {
        line_->announceChange();
        line_->announceLoss();
    }
}

} // namespace tavro::jack
