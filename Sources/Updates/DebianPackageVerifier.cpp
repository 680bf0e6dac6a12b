#include "Updates/DebianPackageVerifier.h"

#include "Updates/ExternalTool.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tavro {

namespace {

/// Where the package's signature is served.
QUrl signatureAddress(const QUrl& package) {
    return QUrl(package.toString(QUrl::FullyEncoded) + QLatin1String(".asc"), QUrl::StrictMode);
}

/// The tool's exit status alone would also stand for a signature of a key that has expired or was revoked.
bool isGoodSignature(const QString& statusLines) {
    constexpr std::array<QLatin1String, 6> faults{QLatin1String("EXPSIG"),    QLatin1String("EXPKEYSIG"),
                                                  QLatin1String("REVKEYSIG"), QLatin1String("BADSIG"),
                                                  QLatin1String("ERRSIG"),    QLatin1String("KEYREVOKED")};
    bool isGood = false;
    for (const auto& line : statusLines.split(QLatin1Char('\n'))) {
        const auto words = line.split(QLatin1Char(' '));
        if (words.size() < 2 || words.front() != QLatin1String("[GNUPG:]")) {
            continue;
        }
        if (std::ranges::find(faults, words.at(1)) != faults.end()) {
            return false;
        }
        isGood = isGood || words.at(1) == QLatin1String("GOODSIG");
    }
    return isGood;
}

/// One Debian package whose signature is fetched and checked, and which is looked into only then.
class DebianPackageInspection final : public PendingWork {
public:
    /// A signature has some hundred bytes.
    static constexpr qint64 longestSignature = 1 << 16;

    /// Begins at once. The environment must outlive this.
    DebianPackageInspection(PackageVerifier::Package package,
                            const DebianPackageVerifier::Environment& environment,
                            Completion<std::monostate> completion);
    ~DebianPackageInspection() override;

private:
    void checkSignature(const Outcome<HttpsClient::Response>& response);
    [[nodiscard]] PlainOutcome saveSignature(const Outcome<HttpsClient::Response>& response);
    void look(const Outcome<QString>& statusLines);
    void compare(const Outcome<QString>& fields);
    void finish(const PlainOutcome& outcome);

    PackageVerifier::Package package_;
    DebianPackageVerifier::Environment environment_;
    Completion<std::monostate> completion_;
    QString signature_;
    std::unique_ptr<PendingWork> step_;
};

DebianPackageInspection::DebianPackageInspection(PackageVerifier::Package package,
                                                 const DebianPackageVerifier::Environment& environment,
                                                 Completion<std::monostate> completion)
    : package_(std::move(package)), environment_(environment), completion_(std::move(completion)),
      signature_(package_.path + QLatin1String(".asc")),
      step_(environment_.https.fetch(
          signatureAddress(package_.address), longestSignature,
          [this](const Outcome<HttpsClient::Response>& response) { checkSignature(response); })) {}

DebianPackageInspection::~DebianPackageInspection() {
    step_.reset();
    environment_.files.removeFile(signature_);
}

void DebianPackageInspection::checkSignature(const Outcome<HttpsClient::Response>& response) {
    if (const auto saved = saveSignature(response); !saved.isSuccess()) {
        finish(saved);
        return;
    }
    step_ = ExternalTool::run(environment_.processes, QStringLiteral("/usr/bin/gpgv"),
                              {QStringLiteral("--status-fd"), QStringLiteral("1"),
                               QStringLiteral("--weak-digest"), QStringLiteral("SHA1"),
                               QStringLiteral("--keyring"), environment_.keyring, signature_, package_.path},
                              [this](const Outcome<QString>& statusLines) { look(statusLines); });
}

PlainOutcome DebianPackageInspection::saveSignature(const Outcome<HttpsClient::Response>& response) {
    if (!response.isSuccess()) {
        return response.failure();
    }
    if (response.value().status != HttpsClient::Response::ok || response.value().isTooLong) {
        return UpdateError::invalidFeed();
    }
    return environment_.files.write(signature_, response.value().body);
}

void DebianPackageInspection::look(const Outcome<QString>& statusLines) {
    if (!statusLines.isSuccess()) {
        finish(statusLines.failure());
        return;
    }
    if (!isGoodSignature(statusLines.value())) {
        finish(UpdateError::commandFailed(statusLines.value().trimmed()));
        return;
    }
    step_ = ExternalTool::run(
        environment_.processes, QStringLiteral("/usr/bin/dpkg-deb"),
        {QStringLiteral("--show"), QStringLiteral("--showformat=${Package}\\n${Version}\\n"), package_.path},
        [this](const Outcome<QString>& fields) { compare(fields); });
}

void DebianPackageInspection::compare(const Outcome<QString>& fields) {
    if (!fields.isSuccess()) {
        finish(fields.failure());
        return;
    }
    const bool isExpected = fields.value() == QLatin1String("tavro\n") + package_.version + QLatin1Char('\n');
    finish(isExpected ? PlainOutcome(std::monostate()) : UpdateError::invalidApplication());
}

void DebianPackageInspection::finish(const PlainOutcome& outcome) {
    // Whoever is told may drop this.
    std::exchange(completion_, {})(outcome);
}

} // namespace

std::optional<UpdatePlatform> DebianPackageVerifier::packageIn(const UpdatePlatforms& platforms) const {
    return platforms.linuxos;
}

std::unique_ptr<PendingWork> DebianPackageVerifier::verify(const Package& package,
                                                           Completion<std::monostate> completion) {
    return std::make_unique<DebianPackageInspection>(package, environment_, std::move(completion));
}

} // namespace tavro
