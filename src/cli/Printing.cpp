#include "cli/Printing.h"

#include "platform/FileNames.h"

#include <cstdio>

namespace vardenix {

namespace {

void Write(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fputc('\n', stream);
}

std::string PlainText(const Json& json) {
    const auto* text = std::get_if<std::string>(&json.Get());
    return text != nullptr ? *text : TextOf(json);
}

} // namespace

void Print(std::string_view line) { Write(stdout, line); }

void Tell(std::string_view text) { Write(stderr, text); }

void PrintJson(const Json& json) { Print(TextOf(json)); }

void PrintValues(const JsonObject& object, bool asJson) {
    if (asJson) {
        PrintJson(object);
        return;
    }
    for (const auto& [name, value] : object)
        Print(name + ": " + PlainText(value));
}

std::string NameOnDisk(const std::string& path) { return TextOfPath(RealPath(path)); }

} // namespace vardenix
