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

} // namespace tavro
