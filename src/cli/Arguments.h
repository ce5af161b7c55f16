#pragma once

#include "cli/CommandLine.h"
#include "cli/TheaterFiles.h"

namespace vardenix {

// Adds the two positions of a post to a command; where they may lie is known only when
// the theater is open.
void AddPost(Command& command, const char* nameX, int32_t& x, const char* nameY,
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

// For a command's check, before anything is opened, in which `widthOf` gives the posts a
// side that `file` has in a theater of so many posts.
void RequireInside(const GivenPost& post, const TheaterFiles& files,
                   const std::function<int32_t(int32_t)>& widthOf,
                   const std::string& file);

} // namespace vardenix
