#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tavro::jack {

/// Makes the calls that a server has to answer on a thread of their own, one after the other, so that a
/// server that does not answer holds up nobody for longer than he wants to wait. To be used by one thread.
class ServerCalls {
public:
    /// `onLateAnswer` is called, on the calls' thread, when a call has ended that nobody waited for any more,
    /// and not once this is destroyed.
    explicit ServerCalls(std::function<void()> onLateAnswer = {});

    /// Waits for nothing. What has begun goes on, and what waits behind it follows; when the process ends
    /// before, they end with it.
    ~ServerCalls();

    ServerCalls(const ServerCalls&) = delete;
    ServerCalls& operator=(const ServerCalls&) = delete;

    /// Makes the call, and waits for its end for so long at most. False when it has not ended by then: it is
    /// still made, or waits behind another one without an answer, so it has to own all that it works on.
    [[nodiscard]] bool make(std::function<void()> call, std::chrono::milliseconds patience);

    /// The same, for a call whose end matters to nobody: does not wait when another one has no answer.
    void makeSometime(std::function<void()> call, std::chrono::milliseconds patience);

    /// Whether a call is still without an answer that somebody has given up waiting for.
    [[nodiscard]] bool isUnanswered() const;

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
    bool hasThread_ = false;
};

} // namespace tavro::jack
