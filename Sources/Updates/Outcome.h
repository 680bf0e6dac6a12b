#pragma once

#include "Updates/UpdateError.h"

#include <functional>
#include <utility>
#include <variant>

namespace tavro {

/// A value, or the reason why there is none.
template <class Value>
class Outcome {
public:
    // Both are returned where an outcome is expected.
    // NOLINTNEXTLINE(google-explicit-constructor)
    Outcome(Value value) : content_(std::in_place_index<0>, std::move(value)) {}

    // NOLINTNEXTLINE(google-explicit-constructor)
    Outcome(UpdateFailure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    // NOLINTNEXTLINE(google-explicit-constructor)
    Outcome(UpdateError error) : Outcome(UpdateFailure(std::move(error))) {}

    [[nodiscard]] bool isSuccess() const { return content_.index() == 0; }

    /// Only of a success.
    [[nodiscard]] const Value& value() const { return std::get<0>(content_); }

    /// Only of a failure.
    [[nodiscard]] const UpdateFailure& failure() const { return std::get<1>(content_); }

private:
    std::variant<Value, UpdateFailure> content_;
};

/// The outcome of what gives no value.
using PlainOutcome = Outcome<std::monostate>;

/// Is told the outcome of pending work, once, on the main thread, never inside the call that begins the work.
template <class Value>
using Completion = std::function<void(const Outcome<Value>&)>;

/// Work under way that tells its outcome later, on the main thread. Destroying it before then ends the work,
/// and nothing is told any more. It may be destroyed from inside its own completion.
class PendingWork {
public:
    PendingWork() = default;
    PendingWork(const PendingWork&) = delete;
    PendingWork& operator=(const PendingWork&) = delete;
    virtual ~PendingWork() = default;
};

} // namespace tavro
