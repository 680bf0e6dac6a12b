#include "Updates/DebianPackageVerifier.h"

#include "Updates/DebianPackageInspection.h"

#include <utility>

namespace tavro {

std::optional<UpdatePlatform> DebianPackageVerifier::packageIn(const UpdatePlatforms& platforms) const {
    return platforms.linuxos;
}

std::unique_ptr<PendingWork> DebianPackageVerifier::verify(const Package& package,
                                                           Completion<std::monostate> completion) {
    return std::make_unique<DebianPackageInspection>(package, environment_, std::move(completion));
}

} // namespace tavro
