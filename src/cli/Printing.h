#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace vardenix {

using Json = nlohmann::ordered_json;

void PrintJson(const Json& json);

// The values of an object, as JSON or one line a value: "posts a side: 256".
void PrintValues(const Json& object, bool asJson);

// The name that a file of the program's texts has on the disk, for scripts to go on with.
std::string NameOnDisk(const std::string& path);

} // namespace vardenix
