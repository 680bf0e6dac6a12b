#include "Platform/Headless/UserDefaultsAdapter.h"

namespace tavro::headless {

std::optional<UserDefaults::Value> UserDefaultsAdapter::value(const std::string& key) const {
    databases_->reads.push_back(name_.empty() ? key : name_ + "/" + key);
    const auto& stored = values();
    const auto found = stored.find(key);
    return found == stored.end() ? std::nullopt : std::optional(found->second);
}

bool UserDefaultsAdapter::setValue(const std::string& key, const Value& value) {
    writes.emplace_back(key, value);
    if (refusesWrites) {
        return false;
    }
    databases_->values[name_][key] = value;
    return true;
}

std::unique_ptr<UserDefaults> UserDefaultsAdapter::suite(const std::string& name) const {
    if (name.empty() || !databases_->values.contains(name)) {
        return nullptr;
    }
    return std::unique_ptr<UserDefaults>(new UserDefaultsAdapter(databases_, name));
}

} // namespace tavro::headless
