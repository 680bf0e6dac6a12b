#include "Platform/Linux/Jack/OutputConnection.h"

#include <utility>

namespace tavro::jack {

namespace {

constexpr std::chrono::milliseconds longestWait{100};

} // namespace

void OutputConnection::open(std::shared_ptr<Client> client, jack_port_t& port) {
    client_ = std::move(client);
    port_ = &port;
}

void OutputConnection::close() {
    dropWaiting();
    destination_.clear();
    port_ = nullptr;
    client_.reset();
}

void OutputConnection::leadTo(const std::string& destination) {
    dropWaiting();
    destination_ = destination;
    follow();
    if (!isInForce()) {
        deadline_ = mainActor_.now() + longestWait;
        look();
    }
}

void OutputConnection::follow() {
    // When a call has no answer yet, a notice of its end leads here again.
    if (client_ != nullptr && client_->isServerThere() && !calls_.isUnanswered()) {
        calls_.makeSometime([client = client_, port = port_,
                             destination = destination_] { client->connectOnly(*port, destination); },
                            client_->patience());
    }
}

void OutputConnection::send(std::span<const std::uint8_t> message) {
    if (isAwaited()) {
        waiting_.emplace_back(message.begin(), message.end());
    } else if (client_ != nullptr) {
        client_->writer().send(PortWriter::Port::output, message);
    }
}

bool OutputConnection::isInForce() const {
    // For a destination that is gone there is nothing to wait.
    return destination_.empty() || client_ == nullptr || !client_->isServerThere() ||
           jack_port_by_name(&client_->handle(), destination_.c_str()) == nullptr ||
           jack_port_connected_to(port_, destination_.c_str()) != 0;
}

void OutputConnection::look() {
    if (isInForce()) {
        sendWaiting();
    } else if (mainActor_.now() >= deadline_.value_or(std::chrono::nanoseconds(0))) {
        dropWaiting();
    } else {
        // The server tells nobody when a connection comes into force.
        nextLook_ = mainActor_.after(std::chrono::milliseconds(1), [this] { look(); });
    }
}

void OutputConnection::sendWaiting() {
    deadline_.reset();
    nextLook_.cancel();
    for (const auto& message : std::exchange(waiting_, {})) {
        send(message);
    }
}

void OutputConnection::dropWaiting() {
    deadline_.reset();
    nextLook_.cancel();
    dropped_ += std::exchange(waiting_, {}).size();
}

} // namespace tavro::jack
