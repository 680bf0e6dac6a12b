#include "Platform/MacOS/LoginItemServiceAdapter.h"

#include <CoreFoundation/CoreFoundation.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <QCoreApplication>

namespace tavro::macos {

namespace {

using Status = LoginItemService::Status;

/// The service's class is looked up while the program runs: systems without it must still start the program.
id mainApplicationService() {
    auto* const serviceClass = reinterpret_cast<id>(objc_getClass("SMAppService"));
    if (serviceClass == nullptr) {
        return nullptr;
    }
    const auto send = reinterpret_cast<id (*)(id, SEL)>(&objc_msgSend);
    return send(serviceClass, sel_registerName("mainAppService"));
}

std::string translated(const char* text) {
    return QCoreApplication::translate("LoginItemServiceAdapter", text).toStdString();
}

std::string descriptionOf(CFErrorRef error) {
    if (error == nullptr) {
        return translated(QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "the system gives no reason"));
    }
    const auto* const text = CFErrorCopyDescription(error);
    std::string description(static_cast<std::size_t>(CFStringGetMaximumSizeForEncoding(
                                CFStringGetLength(text), kCFStringEncodingUTF8)) +
                                1,
                            '\0');
    const bool isThere = CFStringGetCString(text, description.data(),
                                            static_cast<CFIndex>(description.size()), kCFStringEncodingUTF8);
    CFRelease(text);
    return isThere ? description.substr(0, description.find('\0'))
                   : translated(QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "the system gives no reason"));
}

/// Sends a message that gives whether it worked and, if not, an error.
std::optional<std::string> change(const char* message) {
    auto* const service = mainApplicationService();
    if (service == nullptr) {
        return translated(
            QT_TRANSLATE_NOOP("LoginItemServiceAdapter", "this system has no service for login items"));
    }
    // An NSError and a CFError are the same object. It is the autorelease pool's, not ours.
    CFErrorRef error = nullptr;
    const auto send = reinterpret_cast<BOOL (*)(id, SEL, CFErrorRef*)>(&objc_msgSend);
    return send(service, sel_registerName(message), &error) ? std::nullopt
                                                            : std::optional(descriptionOf(error));
}

} // namespace

LoginItemService::Status LoginItemServiceAdapter::status() const {
    auto* const service = mainApplicationService();
    if (service == nullptr) {
        return Status::notFound;
    }
    const auto send = reinterpret_cast<long (*)(id, SEL)>(&objc_msgSend);
    switch (send(service, sel_registerName("status"))) {
    case 0:
        return Status::notRegistered;
    case 1:
        return Status::enabled;
    case 2:
        return Status::requiresApproval;
    default:
        return Status::notFound;
    }
}

std::optional<std::string> LoginItemServiceAdapter::registerItem() {
    return change("registerAndReturnError:");
}

std::optional<std::string> LoginItemServiceAdapter::unregisterItem() {
    return change("unregisterAndReturnError:");
}

} // namespace tavro::macos
