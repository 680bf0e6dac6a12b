#include "Platform/MacOS/ApplicationInformationAdapter.h"

#include "Platform/MacOS/BundleValues.h"

namespace tavro::macos {

std::optional<QString> ApplicationInformationAdapter::value(const QString& key) const {
    auto* const bundle = CFBundleGetMainBundle();
    return bundle != nullptr ? BundleValues::text(bundle, key) : std::nullopt;
}

} // namespace tavro::macos
