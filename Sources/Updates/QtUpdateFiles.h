#pragma once

#include "Updates/UpdateFiles.h"

namespace tavro {

/// The real files.
class QtUpdateFiles final : public UpdateFiles {
public:
    [[nodiscard]] Outcome<QString> applicationSupportFolder() override;
    [[nodiscard]] QString temporaryFolder() const override;
    [[nodiscard]] PlainOutcome makePrivateFolder(const QString& path) override;
    [[nodiscard]] Outcome<QString> makePrivateFile(const QString& folder) override;
    void removeLeftovers(const QString& folder) override;
    [[nodiscard]] PlainOutcome write(const QString& path, const QByteArray& content) override;
    [[nodiscard]] PlainOutcome replace(const QString& path, const QString& newFile) override;
    void removeFile(const QString& path) override;
    void removeFolder(const QString& path) override;
    [[nodiscard]] QStringList names(const QString& folder) const override;
    [[nodiscard]] std::unique_ptr<PendingWork> digest(const QString& path,
                                                      Completion<QString> completion) override;
};

} // namespace tavro
