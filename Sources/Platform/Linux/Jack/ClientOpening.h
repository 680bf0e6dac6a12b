#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Jack/Client.h"
#include "Platform/Linux/Jack/GraphWatch.h"
#include "Platform/Linux/Jack/ServerCalls.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace tavro::jack {

/// A client that is asked for and may come later than anybody wants to wait. Main thread only.
class ClientOpening {
public:
    /// Asks the server and waits for its answer, as long as the options say at most. The functions are those
    /// of `GraphNotices`, for the client that comes. The collaborators must outlive this.
    ClientOpening(ServerCalls& calls, const std::string& name, const MidiSystemOptions& options,
                  MainActor& mainActor, std::function<void()> onChange, std::function<void()> onLoss);
    /// A client that comes later is closed.
    ~ClientOpening() = default;
    ClientOpening(const ClientOpening&) = delete;
    ClientOpening& operator=(const ClientOpening&) = delete;

    [[nodiscard]] bool isAnswered() const;

    struct Answer {
        /// Null when there can be none, for the reason in `status`.
        std::shared_ptr<Client> client;
        jack_status_t status;
        std::unique_ptr<GraphNotices> notices;
    };

    /// Once, when it is answered.
    [[nodiscard]] Answer take();

private:
    struct Shared;
    std::unique_ptr<GraphNotices> notices_;
    std::shared_ptr<Shared> shared_;
};

} // namespace tavro::jack
