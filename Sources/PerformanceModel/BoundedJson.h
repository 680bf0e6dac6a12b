#pragma once

#include <nlohmann/json_fwd.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace tavro {

/// A text that is no JSON, or more of it than anybody means. `what()` names the reason and, where there is
/// one, the place.
class JsonTextError : public std::runtime_error {
public:
    enum class Kind { empty, notUtf8, notJson, tooDeep, tooManyKeys };

    JsonTextError(Kind kind, const std::string& reason) : std::runtime_error(reason), kind_(kind) {}

    [[nodiscard]] Kind kind() const { return kind_; }

private:
    Kind kind_;
};

/// Reading of JSON that somebody else may have written: the time that it takes grows with the length of the
/// text and not with how mean it is.
class BoundedJson {
public:
    BoundedJson() = delete;

    /// Objects and arrays within each other.
    static constexpr int deepest = 32;
    /// Keys of one object.
    static constexpr std::size_t mostKeys = 1000;

    /// One JSON value in UTF-8; a byte order mark before it is skipped. Throws `JsonTextError`.
    [[nodiscard]] static nlohmann::ordered_json parse(std::string_view utf8);
};

} // namespace tavro
