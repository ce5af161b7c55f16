#pragma once

namespace vardenix {

// A file that grows beyond the user's limit is then a write that fails, like one on a
// full disk, and not the end of the program. Programs that this one starts are not
// concerned.
void MakeFileSizeLimitAnError();

// From now on the wish to end (SIGTERM, SIGHUP, SIGINT; what whoever started the program
// has switched off stays off) is heard at leisure instead of ending the program on the
// spot. The second one ends it.
void HearEndSignals();

// The signal that was heard, else 0.
int EndSignalHeard();

// Readable once a signal was heard.
int EndSignalHandle();

} // namespace vardenix
