#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Require.h"
#include "Updates/Manifest/UpdateManifest.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

std::optional<tavro::UpdateManifest> decoded(std::string_view text) {
    try {
        return tavro::UpdateManifest::decode(text);
    } catch (const tavro::JsonTextError& error) {
        tavro::require(*error.what() != '\0', "an error says something");
    } catch (const tavro::DecodingError& error) {
        tavro::require(*error.what() != '\0', "an error says something");
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto manifest = decoded(text);
    tavro::require(decoded(text) == manifest, "the same text gives the same manifest");
    if (manifest) {
        const auto year =
            std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(manifest->publishedAt));
        tavro::require(year.ok() && year.year() >= std::chrono::year(-1) &&
                           year.year() <= std::chrono::year(10000),
                       "the date is one that four digits can name");
    }
    return 0;
}
