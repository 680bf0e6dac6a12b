#include "Platform/Linux/Jack/ServerCalls.h"

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include <unistd.h>

namespace tavro::jack {

namespace {

/// How many calls of the process have begun and not ended.
std::atomic<int> callsUnderWay = 0;

/// A call that gets its answer while the libraries are being taken down would find them half gone.
void leaveWithoutFarewell(int status, void* /*unused*/) {
    if (callsUnderWay.load() != 0) {
        std::fflush(nullptr);
        _exit(status);
    }
}

} // namespace

struct ServerCalls::Shared {
    std::mutex mutex;
    std::condition_variable news;
    std::deque<std::function<void()>> waiting;
    std::function<void()> onLateAnswer;
    /// Calls ever handed over, ended, and given up waiting for.
    std::size_t made = 0;
    std::size_t ended = 0;
    std::size_t givenUp = 0;
    bool isOver = false;

    void work() {
        std::unique_lock lock(mutex);
        while (true) {
            news.wait(lock, [this] { return !waiting.empty() || isOver; });
            if (waiting.empty()) {
                return;
            }
            auto call = std::move(waiting.front());
            waiting.pop_front();
            callsUnderWay.fetch_add(1);
            lock.unlock();
            call();
            // What it owned may need the server too.
            call = nullptr;
            lock.lock();
            callsUnderWay.fetch_sub(1);
            ++ended;
            news.notify_all();
            if (ended <= givenUp && onLateAnswer) {
                onLateAnswer();
            }
        }
    }
};

ServerCalls::ServerCalls(std::function<void()> onLateAnswer) : shared_(std::make_shared<Shared>()) {
    static const auto isRegistered = on_exit(&leaveWithoutFarewell, nullptr);
    static_cast<void>(isRegistered);
    shared_->onLateAnswer = std::move(onLateAnswer);
}

ServerCalls::~ServerCalls() {
    const std::lock_guard lock(shared_->mutex);
    shared_->isOver = true;
    shared_->onLateAnswer = nullptr;
    shared_->news.notify_all();
}

bool ServerCalls::make(std::function<void()> call, std::chrono::milliseconds patience) {
    if (!std::exchange(hasThread_, true)) {
        std::thread([shared = shared_] { shared->work(); }).detach();
    }
    std::unique_lock lock(shared_->mutex);
    shared_->waiting.push_back(std::move(call));
    const auto number = ++shared_->made;
    shared_->news.notify_all();
    const auto hasEnded =
        shared_->news.wait_for(lock, patience, [this, number] { return shared_->ended >= number; });
    if (!hasEnded) {
        shared_->givenUp = number;
    }
    return hasEnded;
}

void ServerCalls::makeSometime(std::function<void()> call, std::chrono::milliseconds patience) {
    const auto hasEnded = make(std::move(call), isUnanswered() ? std::chrono::milliseconds(0) : patience);
    static_cast<void>(hasEnded);
}

bool ServerCalls::isUnanswered() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->ended < shared_->givenUp;
}

} // namespace tavro::jack
