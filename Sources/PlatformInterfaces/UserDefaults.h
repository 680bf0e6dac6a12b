#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace tavro {

/// The user's stored settings: values under keys, in a standard database and in named suites beside it. One
/// adapter per platform. Every call reads or writes the database itself, so that two running copies of the
/// program see each other's changes. Main thread only.
class UserDefaults {
public:
    /// Bytes, as opposed to a text.
    struct Data {
        std::string bytes;

        friend bool operator==(const Data&, const Data&) = default;
    };

    using Value = std::variant<Data, std::string, bool, std::int64_t>;

    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// What is stored under the key; nothing when there is none, or none that can be read.
    [[nodiscard]] virtual std::optional<Value> value(const std::string& key) const = 0;

    /// Stores the value in place of what is there. Either it is stored whole or everything stays as it was,
    /// whenever the program ends. False when it could not be stored; a text that is not UTF-8 may be
    /// refused.
    virtual bool setValue(const std::string& key, const Value& value) = 0;

    /// Another database by its name; null when it cannot be opened.
    [[nodiscard]] virtual std::unique_ptr<UserDefaults> suite(const std::string& name) const = 0;

    /// The stored value when it is of this type.
    [[nodiscard]] std::optional<Data> data(const std::string& key) const { return valueOf<Data>(key); }

    [[nodiscard]] std::optional<std::string> string(const std::string& key) const {
        return valueOf<std::string>(key);
    }

    /// Any stored value read as a boolean; nothing when there is none. A text is true when it begins with
    /// y, t or a digit from 1 to 9, in either case, a number when it is not 0; data is false.
    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const;

private:
    template <class Type>
    [[nodiscard]] std::optional<Type> valueOf(const std::string& key) const {
        const auto stored = value(key);
        const auto* const typed = stored ? std::get_if<Type>(&*stored) : nullptr;
        return typed != nullptr ? std::optional(*typed) : std::nullopt;
    }
};

} // namespace tavro
