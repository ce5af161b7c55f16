#pragma once

#include <string>

namespace vardenix {

class Processes;

// Plays the sound of that name ("S1") and does not wait for it, through the desktop's own
// player. Where there is none, and whatever goes wrong, it stays silent: sounds are an
// adornment. `folder`, with a slash at its end, takes the file that the player reads.
void PlaySoundResource(const std::string& name, const std::string& folder,
                       Processes& processes);

} // namespace vardenix
