#include "Updates/DiskImageVerifier.h"

#include "Updates/DiskImageInspection.h"

#include <utility>

namespace tavro {

std::optional<UpdatePlatform> DiskImageVerifier::packageIn(const UpdatePlatforms& platforms) const {
    return platforms.macos;
}

std::unique_ptr<PendingWork> DiskImageVerifier::verify(const Package& package,
                                                       Completion<std::monostate> completion) {
    return std::make_unique<DiskImageInspection>(package, environment_, std::move(completion));
}

} // namespace tavro
