#include "Platform/Linux/Desktop/ApplicationInformationAdapter.h"

#include <QtGlobal>

namespace tavro::linuxos {

std::optional<QString> ApplicationInformationAdapter::value(const QString& key) const {
    const auto variable = key.toLatin1();
    if (qEnvironmentVariableIsSet(variable.constData())) {
        return qEnvironmentVariable(variable.constData());
    }
    const auto found = builtIn_.find(key);
    return found != builtIn_.end() ? std::optional(found->second) : std::nullopt;
}

} // namespace tavro::linuxos
