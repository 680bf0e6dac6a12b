#pragma once

#include "Updates/Outcome.h"

#include <deque>
#include <memory>
#include <utility>

namespace tavro::headless {

/// Work that is under way until somebody says how it ended.
template <class Value>
class HeldCompletions {
public:
    [[nodiscard]] std::unique_ptr<PendingWork> hold(Completion<Value> completion) {
        auto held = std::make_shared<Completion<Value>>(std::move(completion));
        held_.push_back(held);
        return std::make_unique<Life>(std::move(held));
    }

    /// Ends the oldest work that was not dropped. False when there is none.
    bool answer(const Outcome<Value>& outcome) {
        while (!held_.empty()) {
            const auto completion = held_.front().lock();
            held_.pop_front();
            if (completion != nullptr) {
                (*completion)(outcome);
                return true;
            }
        }
        return false;
    }

    /// Whether some work is under way and was not dropped.
    [[nodiscard]] bool isWaiting() const {
        for (const auto& completion : held_) {
            if (!completion.expired()) {
                return true;
            }
        }
        return false;
    }

private:
    class Life final : public PendingWork {
    public:
        explicit Life(std::shared_ptr<void> held) : held_(std::move(held)) {}

    private:
        std::shared_ptr<void> held_;
    };

    std::deque<std::weak_ptr<Completion<Value>>> held_;
};

} // namespace tavro::headless
