#include "Updates/ManifestValidation.h"

#include "Updates/Manifest/SemanticVersion.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace tavro {

namespace {

UpdateError invalidVersion() {
    return UpdateError::invalidManifest(
        QCoreApplication::translate("UpdateError", "The update manifest version is invalid."));
}

bool isBareName(const QString& text) {
    return !text.isEmpty() && text != QLatin1String(".") && text != QLatin1String("..") &&
           !text.contains(QLatin1Char('/')) && !text.contains(QChar::Null);
}

std::optional<UpdateFailure> faultIn(const UpdatePlatform& platform) {
    constexpr qsizetype digits = 64;
    if (const auto url = ManifestValidation::secureUrl(QString::fromStdString(platform.url));
        !url.isSuccess()) {
        return url.failure();
    }
    if (ManifestValidation::normalizedHash(QString::fromStdString(platform.sha256)).size() != digits) {
        return UpdateError::invalidManifest(
            QCoreApplication::translate("UpdateError", "The update checksum is invalid."));
    }
    const auto name = ManifestValidation::safeFileName(QString::fromStdString(platform.fileName));
    return name.isSuccess() ? std::nullopt : std::optional(name.failure());
}

} // namespace

PlainOutcome ManifestValidation::validate(const UpdateManifest& manifest) {
    constexpr std::int64_t knownSchema = 1;
    if (manifest.schemaVersion != knownSchema || !SemanticVersion::parse(manifest.version)) {
        return invalidVersion();
    }
    if (const auto name = safeVersionFolder(QString::fromStdString(manifest.version)); !name.isSuccess()) {
        return name.failure();
    }
    for (const auto* platform : {&manifest.platforms.windows, &manifest.platforms.macos}) {
        if (auto fault = faultIn(*platform)) {
            return *fault;
        }
    }
    if (manifest.platforms.linuxos) {
        if (auto fault = faultIn(*manifest.platforms.linuxos)) {
            return *fault;
        }
    }
    return std::monostate();
}

Outcome<QUrl> ManifestValidation::secureUrl(const QString& text) {
    const QUrl url(text, QUrl::StrictMode);
    // The text is asked, since the parsed address has its scheme in small letters whatever was written.
    if (!url.isValid() || !text.startsWith(QLatin1String("https:")) || url.host().isEmpty()) {
        return UpdateError::invalidFeed();
    }
    return url;
}

QString ManifestValidation::normalizedHash(const QString& text) {
    QString digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](QChar character) {
        return (character >= QLatin1Char('0') && character <= QLatin1Char('9')) ||
               (character >= QLatin1Char('a') && character <= QLatin1Char('f')) ||
               (character >= QLatin1Char('A') && character <= QLatin1Char('F'));
    });
    return digits.toLower();
}

Outcome<QString> ManifestValidation::safeFileName(const QString& text) {
    if (!isBareName(text)) {
        return UpdateError::invalidManifest(
            QCoreApplication::translate("UpdateError", "The update filename is invalid."));
    }
    return text;
}

Outcome<QString> ManifestValidation::safeVersionFolder(const QString& text) {
    if (!isBareName(text)) {
        return invalidVersion();
    }
    return text;
}

} // namespace tavro
