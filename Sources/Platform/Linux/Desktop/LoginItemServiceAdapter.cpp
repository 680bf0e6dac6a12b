#include "Platform/Linux/Desktop/LoginItemServiceAdapter.h"

#include "Platform/Linux/Desktop/AutostartEntry.h"
#include "Platform/Linux/Settings/ConfigFolder.h"
#include "Platform/Posix/FileReplacement.h"
#include "Platform/Posix/WholeFile.h"

#include <QCoreApplication>

#include <string_view>
#include <system_error>
#include <utility>

namespace tavro::linuxos {

namespace {

std::string translated(const char* text) {
    return QCoreApplication::translate("LoginItemServiceAdapter", text).toStdString();
}

std::filesystem::path runningProgram() {
    std::error_code error;
    auto program = std::filesystem::read_symlink("/proc/self/exe", error).string();
    // An update has put another file in its place, or removed it.
    constexpr std::string_view mark = " (deleted)";
    if (program.ends_with(mark) && !std::filesystem::exists(program, error)) {
        program.resize(program.size() - mark.size());
    }
    return program;
}

} // namespace

LoginItemServiceAdapter::LoginItemServiceAdapter()
    : LoginItemServiceAdapter(ConfigFolder::ofUser() / "autostart", runningProgram()) {}

LoginItemServiceAdapter::LoginItemServiceAdapter(const std::filesystem::path& autostartFolder,
                                                 std::filesystem::path program)
    : entry_(autostartFolder / "tavro.desktop"), program_(std::move(program)) {}

LoginItemService::Status LoginItemServiceAdapter::status() const {
    try {
        const auto text = posix::WholeFile::read(entry_);
        if (!text) {
            return Status::notRegistered;
        }
        const auto entry = AutostartEntry::parse(*text);
        if (!entry) {
            return Status::notFound;
        }
        return entry->isHidden ? Status::requiresApproval : Status::enabled;
    } catch (const std::system_error&) {
        return Status::notFound;
    }
}

std::optional<std::string> LoginItemServiceAdapter::registerItem() {
    if (!program_.is_absolute()) {
        return translated(
            QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "the system does not tell where the program is"));
    }
    const auto text = AutostartEntry::text(program_.string());
    if (!text) {
        return translated(
            QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "the path of the program is not UTF-8"));
    }
    try {
        posix::FileReplacement(entry_).commit(*text);
        return std::nullopt;
    } catch (const std::system_error& error) {
        return error.what();
    }
}

std::optional<std::string> LoginItemServiceAdapter::unregisterItem() {
    std::error_code error;
    // A folder of that name is not ours, whatever is in it.
    if (std::filesystem::is_directory(std::filesystem::symlink_status(entry_, error))) {
        return entry_.string() + ": " +
               translated(QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "is a folder"));
    }
    std::filesystem::remove(entry_, error);
    return error ? std::optional(entry_.string() + ": " + error.message()) : std::nullopt;
}

std::string LoginItemServiceAdapter::note() const {
    return translated(QT_TRANSLATE_NOOP("LoginItemServiceAdapter",
                                        "On this system it is an entry in your desktop's autostart folder."));
}

} // namespace tavro::linuxos
