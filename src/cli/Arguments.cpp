#include "cli/Arguments.h"

#include "cli/Printing.h"

#include <CLI/Option.hpp>

#include <charconv>

namespace vardenix {

namespace {

void RequireNumberInside(const char* name, int32_t value, int32_t width,
                         const std::string& file) {
    if (value >= 0 && value < width)
        return;
    const std::string where =
        std::to_string(value) + " lies outside the terrain of " + NameOnDisk(file);
    throw CLI::ValidationError(name, width == 0 ? where + ", which has no posts"
                                                : where + "; give a number from 0 to " +
                                                      std::to_string(width - 1));
}

} // namespace

CLI::Validator WholeNumber(int64_t min, int64_t max) {
    const std::string range = std::to_string(min) + " to " + std::to_string(max);
    return CLI::Validator(
        [min, max, range](std::string& text) -> std::string {
            int64_t value = 0;
            const char* end = text.data() + text.size();
            const auto [stop, error] = std::from_chars(text.data(), end, value);
            if (error != std::errc() || stop != end || value < min || value > max)
                return "'" + text + "' is no whole number from " + range;
            // The conversion behind this would take "010" for 8.
            text = std::to_string(value);
            return {};
        },
        "INT in [" + std::to_string(min) + " - " + std::to_string(max) + "]");
}

void AddPost(CLI::App& command, const char* nameX, int32_t& x, const char* nameY,
             int32_t& y) {
    command.add_option(nameX, x, "Column, from 0 at the left")
        ->transform(FittingField<int32_t>().description(""))
        ->required();
    command.add_option(nameY, y, "Row, from 0 at the bottom")
        ->transform(FittingField<int32_t>().description(""))
        ->required();
}

void RequireInside(const GivenPost& post, int32_t width, const std::string& file) {
    RequireNumberInside(post.NameX, post.X, width, file);
    RequireNumberInside(post.NameY, post.Y, width, file);
}

} // namespace vardenix
