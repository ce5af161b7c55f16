#pragma once

#include "updater/UpdateList.h"

#include <string>
#include <vector>

namespace vardenix {

// A signature vouches for a list at any time, also when an old archive is offered again,
// or one of the other kind. So a signed list ends with two lines that say what it is,
// which programs that have no key pass over:
//
//     VERSION*3.1.0
//     KIND*PATCH
//
// The version is of one to three numbers, the kind PATCH or UPDATE.

// Why a signed list is not for a program of `programVersion` that was offered an update
// of that type (UpdateKind), as a sentence; empty when it is: the two lines are its last
// and stand nowhere else, behind a command that is no question, the version is newer than
// the program's, and the kind is that of the offer.
std::string WhyReleaseRefused(const std::vector<UpdateListEntry>& entries, int updateType,
                              const std::string& programVersion);

} // namespace vardenix
