#pragma once

#include <string>

namespace vardenix {

// The program has two places: the folder that it is installed in, with the files that
// come with it, and the folder that it writes to. They are one where it may write beside
// itself.

// The folder of the running program, without a slash behind it.
std::string ProgramFolder();

// The running program's own file, to start it once more; the file that is in its place
// now should an update have replaced it meanwhile.
std::string ProgramFile();

// The folder for the program's own files: `programFolder` when files can be made there
// and no file "by-package" says that the system's packages put it there, else the user's
// data folder of the platform, which need not be there yet. Without a slash behind it;
// empty for a user who has no home.
std::string OwnFilesFolder(const std::string& programFolder);

// The user's data folder of the platform, whatever folder the program writes to; it need
// not be there yet. Without a slash behind it; empty for a user who has no home.
std::string UsersDataFolder();

// Makes the folder for the program's own files where it is missing, for its user alone.
// Error 76 for an empty text,
// else the system's refusal.
void MakeOwnFilesFolder(const std::string& folder);

// A folder below the system's folder for temporary files that belongs to this user and
// that nobody else can enter; made when it is missing. Without a slash behind it. Error
// 70 when all names that would do are taken by others.
std::string OwnTemporaryFolder();

// Makes such a folder again should it have gone meanwhile; error 70 when somebody else's
// is in its place.
void KeepOwnTemporaryFolder(const std::string& folder);

// Makes a folder of ours at a name that is free, for its user alone; its parents too
// where they are missing. Error 75 when a link or a file is there instead.
void MakeScratchFolder(const std::string& folder);

} // namespace vardenix
