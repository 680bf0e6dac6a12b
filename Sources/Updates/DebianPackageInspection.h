#pragma once

#include "Updates/DebianPackageVerifier.h"

namespace tavro {

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

} // namespace tavro
