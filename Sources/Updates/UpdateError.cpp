#include "Updates/UpdateError.h"

#include <QCoreApplication>

#include <utility>

namespace tavro {

UpdateError::UpdateError(Kind kind, QString description)
    : kind_(kind), description_(std::move(description)) {}

UpdateError UpdateError::invalidManifest(const QString& message) {
    return {Kind::invalidManifest, message};
}

UpdateError UpdateError::commandFailed(const QString& message) {
    return {Kind::commandFailed, message};
}

UpdateError UpdateError::invalidFeed() {
    return {
        Kind::invalidFeed,
        QCoreApplication::translate(
            "UpdateError", "The TAVRO update service is temporarily unavailable. Please try again later.")};
}

UpdateError UpdateError::integrityCheckFailed() {
    return {Kind::integrityCheckFailed,
            QCoreApplication::translate("UpdateError", "The downloaded update failed its security check.")};
}

UpdateError UpdateError::invalidApplication() {
    return {Kind::invalidApplication,
            QCoreApplication::translate(
                "UpdateError", "The downloaded installer does not contain the expected TAVRO application.")};
}

} // namespace tavro
