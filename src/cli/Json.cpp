#include "cli/Json.h"

#include <nlohmann/json.hpp>

namespace vardenix {

namespace {

using Library = nlohmann::ordered_json;

Library Converted(const Json& json);

Library ConvertedValue(const JsonArray& array) {
    Library list = Library::array();
    for (const Json& element : array)
        list.push_back(Converted(element));
    return list;
}

Library ConvertedValue(const JsonObject& object) {
    Library members = Library::object();
    for (const auto& [name, value] : object)
        members[name] = Converted(value);
    return members;
}

template <typename Plain>
Library ConvertedValue(const Plain& value) {
    return value;
}

Library Converted(const Json& json) {
    return std::visit([](const auto& value) { return ConvertedValue(value); },
                      json.Get());
}

} // namespace

std::string TextOf(const Json& json) {
    return Converted(json).dump(2, ' ', false, Library::error_handler_t::replace);
}

} // namespace vardenix
