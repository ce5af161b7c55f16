#include "cli/Arguments.h"

#include "cli/Printing.h"

namespace vardenix {

namespace {

void RequireNumberInside(const char* name, int32_t value, int32_t width,
                         const std::string& file) {
    if (value >= 0 && value < width)
        return;
    const std::string where =
        std::to_string(value) + " lies outside the terrain of " + NameOnDisk(file);
    throw UsageError(name, width == 0 ? where + ", which has no posts"
                                      : where + "; give a number from 0 to " +
                                            std::to_string(width - 1));
}

} // namespace

void AddPost(Command& command, const char* nameX, int32_t& x, const char* nameY,
             int32_t& y) {
    command.Number(nameX, x, "Column, from 0 at the left").Required();
    command.Number(nameY, y, "Row, from 0 at the bottom").Required();
}

void RequireInside(const GivenPost& post, int32_t width, const std::string& file) {
    RequireNumberInside(post.NameX, post.X, width, file);
    RequireNumberInside(post.NameY, post.Y, width, file);
}

void RequireInside(const GivenPost& post, const TheaterFiles& files,
                   const std::function<int32_t(int32_t)>& widthOf,
                   const std::string& file) {
    if (const std::optional<int32_t> width = files.WidthOnDisk())
        RequireInside(post, widthOf(*width), file);
}

} // namespace vardenix
