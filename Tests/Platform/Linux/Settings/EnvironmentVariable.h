#pragma once

#include <optional>
#include <string>

#include <stdlib.h>

namespace tavro::linuxos {

/// Sets an environment variable for the life of this; null removes it.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        if (const char* const old = getenv(name); old != nullptr) {
            old_ = old;
        }
        set(value);
    }

    ~EnvironmentVariable() { set(old_ ? old_->c_str() : nullptr); }

    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const char* value) { value != nullptr ? setenv(name_, value, 1) : unsetenv(name_); }

    const char* name_;
    std::optional<std::string> old_;
};

} // namespace tavro::linuxos
