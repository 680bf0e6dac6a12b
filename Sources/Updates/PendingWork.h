#pragma once

namespace tavro {

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
