#pragma once

#include "Concurrency/MainActor.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

#include <jack/jack.h>

namespace tavro::jack {

/// Where notices of a server's threads become calls on the main thread. Notices that come in a row are one
/// call there. Made and destroyed on the main thread; the notices may outlive it.
class GraphNotices {
public:
    /// Both are called on the main thread, and never once this is destroyed, which either may do. The actor
    /// must outlive this.
    GraphNotices(MainActor& mainActor, std::function<void()> onChange, std::function<void()> onLoss);
    ~GraphNotices();
    GraphNotices(const GraphNotices&) = delete;
    GraphNotices& operator=(const GraphNotices&) = delete;

    /// What the server's threads hold. Any thread.
    class Line : public std::enable_shared_from_this<Line> {
    public:
        void announceChange();
        void announceLoss();

    private:
        friend class GraphNotices;
        void post(void (GraphNotices::*notice)());

        std::mutex mutex_;
        /// Null when nobody listens any more.
        GraphNotices* listener_ = nullptr;
        bool isAnnounced_ = false;
    };

    [[nodiscard]] const std::shared_ptr<Line>& line() const { return line_; }

private:
    void tellChange();
    void tellLoss();

    MainActor& mainActor_;
    std::function<void()> onChange_;
    std::function<void()> onLoss_;
    std::shared_ptr<Line> line_ = std::make_shared<Line>();
};

/// Listens to what the server tells a client about its graph, on the server's threads.
class GraphWatch {
public:
    /// Registers itself with a client that is not active yet. The client must be closed before this is
    /// destroyed.
    GraphWatch(jack_client_t& client, std::shared_ptr<GraphNotices::Line> line);

    GraphWatch(const GraphWatch&) = delete;
    GraphWatch& operator=(const GraphWatch&) = delete;
    ~GraphWatch() = default;

    /// False once the server has gone or has thrown the client out. Any thread.
    [[nodiscard]] bool isServerThere() const { return isServerThere_.load(); }

private:
    void announceLoss();

    std::shared_ptr<GraphNotices::Line> line_;
    std::atomic<bool> isServerThere_ = true;
};

} // namespace tavro::jack
