#pragma once

#include "Concurrency/VirtualMainActor.h"
#include "Updates/Doubles/ApplicationInformationAdapter.h"
#include "Updates/Doubles/ChildProcessesAdapter.h"
#include "Updates/Doubles/FileOpenerAdapter.h"
#include "Updates/Doubles/HttpsClientAdapter.h"
#include "Updates/Doubles/UpdateFilesAdapter.h"
#include "Updates/Manifest/ManifestTexts.h"
#include "Updates/UpdateService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>

#include <ostream>

namespace tavro {

inline std::ostream& operator<<(std::ostream& stream, const UpdateFailure& failure) {
    return stream << failure.description().toStdString();
}

/// Knows the macOS packages, and is told by hand whether they are right.
class RecordingVerifier final : public PackageVerifier {
public:
    std::vector<Package> packages;
    headless::HeldCompletions<std::monostate> verdicts;
    bool knowsLinux = false;

    [[nodiscard]] std::optional<UpdatePlatform> packageIn(const UpdatePlatforms& platforms) const override {
        return knowsLinux ? platforms.linuxos : platforms.macos;
    }

    [[nodiscard]] std::unique_ptr<PendingWork> verify(const Package& package,
                                                      Completion<std::monostate> completion) override {
        packages.push_back(package);
        return verdicts.hold(std::move(completion));
    }
};

/// The service over adapters that record.
class UpdatesFixture : public testing::Test {
protected:
    using Json = nlohmann::ordered_json;
    using Answer = Outcome<std::optional<AvailableUpdate>>;

    UpdatesFixture() {
        information.values[QStringLiteral("TAVROUpdateFeedURL")] =
            QStringLiteral("https://feed.example/latest");
        information.values[QStringLiteral("CFBundleShortVersionString")] = QStringLiteral("1.3.0");
    }

    static Outcome<HttpsClient::Response> served(const QByteArray& body, int status = 200) {
        return HttpsClient::Response{.status = status, .body = body, .isTooLong = false};
    }

    static Outcome<HttpsClient::Response> servedManifest(const Json& manifest) {
        return served(QByteArray::fromStdString(manifest.dump()));
    }

    /// What comes of a check when the feed answers so.
    Answer checkAgainst(const Outcome<HttpsClient::Response>& response) {
        std::optional<Answer> answer;
        const auto check = service.check([&](const Answer& given) { answer = given; });
        EXPECT_FALSE(answer.has_value()) << "told inside the call";
        https.answers.answer(response);
        main.runDue();
        EXPECT_TRUE(answer.has_value());
        return answer.value_or(Answer(UpdateFailure::ofSystem(QStringLiteral("nothing was told"))));
    }

    static AvailableUpdate available() {
        const auto manifest = UpdateManifest::decode(ManifestTexts::whole().dump());
        return {.installedVersion = "1.3.0", .manifest = manifest, .package = manifest.platforms.macos};
    }

    VirtualMainActor main;
    headless::HttpsClientAdapter https;
    headless::UpdateFilesAdapter files;
    headless::ApplicationInformationAdapter information;
    headless::FileOpenerAdapter opener;
    RecordingVerifier verifier;
    UpdateService service{{.https = https,
                           .files = files,
                           .information = std::cref(information),
                           .verifier = verifier,
                           .open = std::ref(opener),
                           .mainActor = main},
                          QStringLiteral("https://default.invalid/latest.json")};
};

} // namespace tavro
