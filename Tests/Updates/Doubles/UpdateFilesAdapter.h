#pragma once

#include "Updates/Doubles/HeldCompletions.h"
#include "Updates/UpdateFiles.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace tavro::headless {

/// Files that are only fields. A digest is told by hand.
class UpdateFilesAdapter final : public UpdateFiles {
public:
    std::map<QString, QByteArray> files;
    /// Those that were made and not removed.
    std::set<QString> folders;
    /// What `names` finds, by the beginning of the folder's path.
    std::map<QString, QStringList> contents;
    /// The files whose digest was asked for.
    std::vector<QString> digested;
    HeldCompletions<QString> digests;

    /// When set, the operation fails with this reason.
    std::optional<QString> supportFailure;
    std::optional<QString> writeFailure;
    std::optional<QString> replaceFailure;
    /// By the beginning of the folder's path.
    std::map<QString, QString> folderFailures;

    [[nodiscard]] Outcome<QString> applicationSupportFolder() override {
        return supportFailure ? Outcome<QString>(UpdateFailure::ofSystem(*supportFailure))
                              : QStringLiteral("/support");
    }

    [[nodiscard]] QString temporaryFolder() const override { return QStringLiteral("/temporary"); }

    [[nodiscard]] PlainOutcome makePrivateFolder(const QString& path) override {
        for (const auto& [beginning, reason] : folderFailures) {
            if (path.startsWith(beginning)) {
                return UpdateFailure::ofSystem(reason);
            }
        }
        folders.insert(path);
        return std::monostate();
    }

    [[nodiscard]] Outcome<QString> makePrivateFile(const QString& folder) override {
        const auto path = folder + QLatin1String("/.download-new");
        files[path] = {};
        return path;
    }

    void removeLeftovers(const QString& folder) override {
        const auto beginning = folder + QLatin1String("/.download-");
        std::erase_if(files, [&](const auto& file) { return file.first.startsWith(beginning); });
    }

    [[nodiscard]] PlainOutcome write(const QString& path, const QByteArray& content) override {
        if (writeFailure) {
            return UpdateFailure::ofSystem(*writeFailure);
        }
        files[path] = content;
        return std::monostate();
    }

    [[nodiscard]] PlainOutcome replace(const QString& path, const QString& newFile) override {
        if (replaceFailure) {
            return UpdateFailure::ofSystem(*replaceFailure);
        }
        files[path] = files[newFile];
        files.erase(newFile);
        return std::monostate();
    }

    void removeFile(const QString& path) override { files.erase(path); }

    void removeFolder(const QString& path) override { folders.erase(path); }

    [[nodiscard]] QStringList names(const QString& folder) const override {
        for (const auto& [beginning, names] : contents) {
            if (folder.startsWith(beginning)) {
                return names;
            }
        }
        return {};
    }

    [[nodiscard]] std::unique_ptr<PendingWork> digest(const QString& path,
                                                      Completion<QString> completion) override {
        digested.push_back(path);
        return digests.hold(std::move(completion));
    }
};

} // namespace tavro::headless
