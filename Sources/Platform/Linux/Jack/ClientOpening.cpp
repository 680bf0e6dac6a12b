#include "Platform/Linux/Jack/ClientOpening.h"

#include <atomic>
#include <cstdlib>
#include <utility>

namespace tavro::jack {

namespace {

/// Asks PipeWire for the period that fits an instrument, unless the user has asked for one himself.
void askForPeriod(bool isShort) {
    static const auto* const variable = "PIPEWIRE_LATENCY";
    static const bool isUsers = std::getenv(variable) != nullptr;
    if (isUsers) {
        return;
    }
    if (isShort) {
        setenv(variable, "128/48000", 1);
    } else {
        unsetenv(variable);
    }
}

} // namespace

struct ClientOpening::Shared {
    std::atomic<bool> isAnswered = false;
    /// The calls' thread's until it is answered.
    jack_status_t status{};
    std::shared_ptr<Client> client;
};

ClientOpening::ClientOpening(ServerCalls& calls, const std::string& name, const MidiSystemOptions& options,
                             MainActor& mainActor, std::function<void()> onChange,
                             std::function<void()> onLoss)
    : notices_(std::make_unique<GraphNotices>(mainActor, std::move(onChange), std::move(onLoss))),
      shared_(std::make_shared<Shared>()) {
    askForPeriod(options.asksForShortPeriod);
    calls.makeSometime(
        [shared = shared_, line = notices_->line(), name] {
            shared->client = Client::open(name, line, shared->status);
            shared->isAnswered = true;
        },
        options.patience);
}

bool ClientOpening::isAnswered() const {
    return shared_->isAnswered;
}

ClientOpening::Answer ClientOpening::take() {
    return {.client = std::move(shared_->client), .status = shared_->status, .notices = std::move(notices_)};
}

} // namespace tavro::jack
