#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tavro {

/// A JSON value that does not fit. `what()` is a sentence that names the key and what was expected there.
class DecodingError : public std::runtime_error {
public:
    /// An empty key stands for the whole value.
    DecodingError(std::string key, std::string expected, const nlohmann::ordered_json& found);

    [[nodiscard]] const std::string& key() const { return key_; }

    [[nodiscard]] const std::string& expected() const { return expected_; }

private:
    std::string key_;
    std::string expected_;
};

/// Strict reading of single JSON values. Everything throws `DecodingError` for a value of another type; the
/// key is only for the error.
class JsonDecoding {
public:
    JsonDecoding() = delete;

    /// A whole number of 64 bits with its sign. One that is written with a fraction of zero is whole.
    [[nodiscard]] static std::int64_t integer(const std::string& key, const nlohmann::ordered_json& json);

    [[nodiscard]] static bool flag(const std::string& key, const nlohmann::ordered_json& json);

    /// The reference is good for the life of `json`.
    [[nodiscard]] static const std::string& text(const std::string& key, const nlohmann::ordered_json& json,
                                                 const std::string& expected = "a text");
};

} // namespace tavro
