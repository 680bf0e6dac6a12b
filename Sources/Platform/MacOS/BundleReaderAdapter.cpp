#include "Platform/MacOS/BundleReaderAdapter.h"

#include "Platform/MacOS/BundleValues.h"

#include <QByteArray>

namespace tavro::macos {

std::optional<BundleReader::Bundle> BundleReaderAdapter::read(const QString& path) const {
    const auto bytes = path.toUtf8();
    const auto* const url = CFURLCreateFromFileSystemRepresentation(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.constData()),
        static_cast<CFIndex>(bytes.size()), true);
    if (url == nullptr) {
        return std::nullopt;
    }
    auto* const bundle = CFBundleCreate(kCFAllocatorDefault, url);
    CFRelease(url);
    if (bundle == nullptr) {
        return std::nullopt;
    }
    Bundle result{.identifier = BundleValues::text(bundle, QStringLiteral("CFBundleIdentifier")),
                  .shortVersion = BundleValues::text(bundle, QStringLiteral("CFBundleShortVersionString"))};
    CFRelease(bundle);
    return result;
}

} // namespace tavro::macos
