#pragma once

#include "Concurrency/MainActor.h"

#include <atomic>
#include <functional>
#include <memory>

#include <jack/jack.h>

namespace tavro::jack {

/// Listens to what the server tells about its graph, on the server's threads, and brings it to the main
/// thread. Notices that come in a row are one notice there.
class GraphWatch {
public:
    /// Registers itself with a client that is not active yet. `onChange` and `onLoss` are called on the main
    /// thread, and never once this is destroyed, which either may do. `onLoss` is called once at most: when
    /// the server has gone or has thrown the client out. The client must be closed before this is destroyed.
    GraphWatch(jack_client_t& client, MainActor& mainActor, std::function<void()> onChange,
               std::function<void()> onLoss);

    GraphWatch(const GraphWatch&) = delete;
    GraphWatch& operator=(const GraphWatch&) = delete;
    ~GraphWatch() = default;

    /// False once the server has gone or has thrown the client out. Any thread.
    [[nodiscard]] bool isServerThere() const { return isServerThere_.load(); }

private:
    void announce();
    void announceLoss();

    MainActor& mainActor_;
    std::function<void()> onChange_;
    std::function<void()> onLoss_;
    std::atomic<bool> isServerThere_ = true;
    std::atomic<bool> isAnnounced_ = false;
    /// What waits on the main thread cannot be cancelled; it looks here whether this still exists.
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace tavro::jack
