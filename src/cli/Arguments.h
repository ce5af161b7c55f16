#pragma once

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

#include <cstdint>
#include <limits>
#include <string>

namespace vardenix {

// Takes decimal whole numbers from `min` to `max`, and names the range in its refusal.
CLI::Validator WholeNumber(int64_t min, int64_t max);

// The numbers that fit a field of the type.
template <typename Field>
CLI::Validator FittingField() {
    return WholeNumber(std::numeric_limits<Field>::min(),
                       std::numeric_limits<Field>::max());
}

// Adds the two positions of a post to a command; where they may lie is known only when
// the theater is open.
void AddPost(CLI::App& command, const char* nameX, int32_t& x, const char* nameY,
             int32_t& y);

// The positions of a post as they were given, from 0, and what they are called.
struct GivenPost {
    const char* NameX;
    int32_t X;
    const char* NameY;
    int32_t Y;
};

// A usage error unless the post lies in the `width` posts a side of a file.
void RequireInside(const GivenPost& post, int32_t width, const std::string& file);

} // namespace vardenix
