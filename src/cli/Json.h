#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vardenix {

class Json;
using JsonArray = std::vector<Json>;
using JsonObject = std::vector<std::pair<std::string, Json>>; // in the order told

// A value to be printed as JSON, made as it reads: Json(JsonObject{{"x", 3}, {"y", 5}}).
// Texts are UTF-8; bytes that are none are replaced when it is printed. The library that
// writes JSON is known to Json.cpp alone, since its header is slow to compile.
class Json {
public:
    using Value = std::variant<std::nullptr_t, bool, int64_t, double, std::string,
                               JsonArray, JsonObject>;

    Json() = default;
    Json(bool value) : value_(value) {}
    template <std::integral Number>
    Json(Number value) : value_(static_cast<int64_t>(value)) {}
    Json(double value) : value_(value) {}
    Json(std::string text) : value_(std::move(text)) {}
    Json(const char* text) : value_(std::string(text)) {}
    Json(JsonArray array) : value_(std::move(array)) {}
    Json(JsonObject object) : value_(std::move(object)) {}

    const Value& Get() const { return value_; }

private:
    Value value_;
};

// Two blanks a level, without a line end behind the last line.
std::string TextOf(const Json& json);

} // namespace vardenix
