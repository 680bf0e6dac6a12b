#include "Programs/tavro/AppMainUpdates.h"

namespace tavro {

std::unique_ptr<AppMainUpdates> AppMainUpdates::make(MainActor& /*mainActor*/,
                                                     std::function<void()> /*terminate*/) {
    return nullptr;
}

} // namespace tavro
