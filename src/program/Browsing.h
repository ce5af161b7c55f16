#pragma once

#include "platform/Dialogs.h"
#include "program/Configuration.h"
#include "program/TheaterOpening.h"

#include <functional>
#include <string>

namespace vardenix {

// Ways to the four paths of a theater beside the list of an install. Whatever is given
// goes into `paths` and into the settings at once, and `show` is called.

// Asks for the four paths one after the other. Each dialog begins where the answer before
// suggests: with another L2 file, at the files of the theater that it lies in, as far as
// they are there; else at the path that is shown. Cancelling a dialog leaves the rest as
// it is.
void BrowseTheaterPaths(TheaterPaths& paths, Configuration& configuration,
                        Dialogs& dialogs, const std::function<void()>& show);

// The four paths of a theater that was dropped on the window or named at the start: its
// folder, its folder "terrain", or a file of that. Error 53 where no L2 file is found,
// with what was looked for; nothing is changed then.
void TakeTheaterFolder(const std::string& dropped, TheaterPaths& paths,
                       Configuration& configuration, const std::function<void()>& show);

// The folder of the theater that was meant by one of these. Error 53 likewise.
std::string TheaterFolderOf(const std::string& dropped);

} // namespace vardenix
