#include "Platform/Linux/Jack/GraphWatch.h"

#include <jack/metadata.h>

#include <utility>

namespace tavro::jack {

GraphWatch::GraphWatch(jack_client_t& client, MainActor& mainActor, std::function<void()> onChange,
                       std::function<void()> onLoss)
    : mainActor_(mainActor), onChange_(std::move(onChange)), onLoss_(std::move(onLoss)) {
    jack_on_shutdown(&client, [](void* self) { static_cast<GraphWatch*>(self)->announceLoss(); }, this);
    jack_set_client_registration_callback(
        &client, [](const char*, int, void* self) { static_cast<GraphWatch*>(self)->announce(); }, this);
    jack_set_port_registration_callback(
        &client, [](jack_port_id_t, int, void* self) { static_cast<GraphWatch*>(self)->announce(); }, this);
    jack_set_port_rename_callback(
        &client,
        [](jack_port_id_t, const char*, const char*, void* self) {
            static_cast<GraphWatch*>(self)->announce();
        },
        this);
    jack_set_port_connect_callback(
        &client,
        [](jack_port_id_t, jack_port_id_t, int, void* self) { static_cast<GraphWatch*>(self)->announce(); },
        this);
    // The server tells of a connection when it was asked for it, and puts it in force between two periods, on
    // a busy machine some periods later. Who looks before that sees the old graph; this tells of the new one.
    jack_set_graph_order_callback(
        &client,
        [](void* self) {
            static_cast<GraphWatch*>(self)->announce();
            return 0;
        },
        this);
    jack_set_property_change_callback(
        &client,
        [](jack_uuid_t, const char*, jack_property_change_t, void* self) {
            static_cast<GraphWatch*>(self)->announce();
        },
        this);
}

void GraphWatch::announce() {
    if (isAnnounced_.exchange(true)) {
        return;
    }
    mainActor_.post([this, life = std::weak_ptr(life_)] {
        if (life.expired()) {
            return;
        }
        // Before the call: a change that comes while it runs needs another one.
        isAnnounced_.store(false);
        const auto onChange = onChange_;
        onChange();
    });
}

void GraphWatch::announceLoss() {
    if (!isServerThere_.exchange(false)) {
        return;
    }
    announce();
    mainActor_.post([this, life = std::weak_ptr(life_)] {
        if (life.expired()) {
            return;
        }
        const auto onLoss = onLoss_;
        onLoss();
    });
}

} // namespace tavro::jack
