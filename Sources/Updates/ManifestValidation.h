#pragma once

#include "Updates/Manifest/UpdateManifest.h"
#include "Updates/Outcome.h"

#include <QUrl>

namespace tavro {

/// What must hold for a decoded manifest before anything in it is used.
class ManifestValidation {
public:
    ManifestValidation() = delete;

    /// The first thing that is wrong, in the order of the manifest's schema and version, then the Windows,
    /// the macOS and the Linux package.
    [[nodiscard]] static PlainOutcome validate(const UpdateManifest& manifest);

    /// The address, whose scheme must be "https" in small letters.
    [[nodiscard]] static Outcome<QUrl> secureUrl(const QString& text);

    /// The hexadecimal digits of the text in small letters, without anything between them.
    [[nodiscard]] static QString normalizedHash(const QString& text);

    /// The text itself, which must be a bare name: it becomes that of a file.
    [[nodiscard]] static Outcome<QString> safeFileName(const QString& text);

    /// The text itself, which must be a bare name: it becomes that of a folder, and a version may end with
    /// anything at all.
    [[nodiscard]] static Outcome<QString> safeVersionFolder(const QString& text);
};

} // namespace tavro
