#include "Updates/Manifest/UpdatePlatforms.h"

#include "Updates/Manifest/ManifestKeys.h"

namespace tavro {

UpdatePlatforms UpdatePlatforms::decode(const std::string& path, const nlohmann::ordered_json& json) {
    const ManifestKeys keys(path, json);
    UpdatePlatforms platforms{.windows =
                                  UpdatePlatform::decode(keys.pathOf("windows"), keys.required("windows")),
                              .macos = UpdatePlatform::decode(keys.pathOf("macos"), keys.required("macos")),
                              .linuxos = std::nullopt};
    if (const auto* const entry = keys.find("linux"); entry != nullptr) {
        platforms.linuxos = UpdatePlatform::decode(keys.pathOf("linux"), *entry);
    }
    return platforms;
}

} // namespace tavro
