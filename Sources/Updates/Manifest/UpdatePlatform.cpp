#include "Updates/Manifest/UpdatePlatform.h"

#include "Updates/Manifest/ManifestKeys.h"

namespace tavro {

UpdatePlatform UpdatePlatform::decode(const std::string& path, const nlohmann::ordered_json& json) {
    const ManifestKeys keys(path, json);
    return {.url = keys.text("url"),
            .sha256 = keys.text("sha256"),
            .fileName = keys.text("fileName"),
            .minimumOS = keys.optionalText("minimumOS")};
}

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
