#include "Updates/UpdateCheck.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Updates/Manifest/SemanticVersion.h"
#include "Updates/ManifestValidation.h"

#include <utility>

namespace tavro {

namespace {

Outcome<UpdateManifest> manifestIn(const QByteArray& body) {
    try {
        return UpdateManifest::decode({body.constData(), static_cast<std::size_t>(body.size())});
    } catch (const JsonTextError& error) {
        return UpdateFailure::ofSystem(QString::fromUtf8(error.what()));
    } catch (const DecodingError& error) {
        return UpdateFailure::ofSystem(QString::fromUtf8(error.what()));
    }
}

} // namespace

UpdateCheck::UpdateCheck(Question question, const UpdateService::Environment& environment,
                         Completion<Answer> completion)
    : question_(std::move(question)), verifier_(environment.verifier), completion_(std::move(completion)) {
    const auto address = ManifestValidation::secureUrl(question_.feedAddress);
    if (!address.isSuccess()) {
        refusal_ = environment.mainActor.after(
            {}, [this, failure = address.failure()] { std::exchange(completion_, {})(failure); });
        return;
    }
    fetch_ =
        environment.https.fetch(address.value(), longestManifest,
                                [this](const Outcome<HttpsClient::Response>& response) { take(response); });
}

void UpdateCheck::take(const Outcome<HttpsClient::Response>& response) {
    const auto answer = answerIn(response);
    // Whoever is told may drop this.
    std::exchange(completion_, {})(answer);
}

Outcome<UpdateCheck::Answer> UpdateCheck::answerIn(const Outcome<HttpsClient::Response>& response) const {
    if (!response.isSuccess()) {
        return response.failure();
    }
    if (response.value().status != HttpsClient::Response::ok || response.value().isTooLong) {
        return UpdateError::invalidFeed();
    }
    const auto manifest = manifestIn(response.value().body);
    if (!manifest.isSuccess()) {
        return manifest.failure();
    }
    const auto validity = ManifestValidation::validate(manifest.value());
    if (!validity.isSuccess()) {
        return validity.failure();
    }
    return answerFor(manifest.value());
}

Outcome<UpdateCheck::Answer> UpdateCheck::answerFor(const UpdateManifest& manifest) const {
    const auto installedVersion = question_.installedVersion.toStdString();
    const auto installed = SemanticVersion::parse(installedVersion);
    const auto offered = SemanticVersion::parse(manifest.version);
    const auto package = verifier_.packageIn(manifest.platforms);
    if (!installed || !offered || !package || !(*installed < *offered)) {
        return Answer();
    }
    return Answer(
        AvailableUpdate{.installedVersion = installedVersion, .manifest = manifest, .package = *package});
}

} // namespace tavro
