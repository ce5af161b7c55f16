#pragma once

#include "catalogue/TextureBin.h"
#include "platform/Dialogs.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vardenix {

// The pictures that the tiles of the catalogue in memory want, six for each, sorted
// without regard to case; bytes as the catalogue has them.
std::vector<std::string> WantedNames(const TextureBin& bin);

// Every file directly in the folder, whatever its kind, as the disk has its name; folders
// are left out. Sorted in the same way. The system's refusal when it cannot be read.
std::vector<std::string> PresentNames(const std::string& ddsFolder);

// The present ones that are not wanted, in their order. Both lists are sorted as above.
std::vector<std::string> UnusedNames(const std::vector<std::string>& wanted,
                                     const std::vector<std::string>& present);

// Of the catalogue and the folder; what cmdDeleteUnusedDDS would delete. A journal and
// what is staged are not among them: an interrupted intake may need them to be finished.
std::vector<std::string> UnusedPictures(const Catalogue& catalogue);

// Deletes them one by one; those that cannot be deleted are told in boxes afterwards. How
// many have gone.
size_t DeletePictures(const std::string& ddsFolder, const std::vector<std::string>& names,
                      Dialogs& dialogs);

// Asks twice, then deletes.
void cmdDeleteUnusedDDS(const Catalogue& catalogue, Dialogs& dialogs);

} // namespace vardenix
