#pragma once

#include <cstddef>
#include <functional>

namespace vardenix {

// Runs work(0) to work(count - 1), each once, on `threads` threads (0: as many as the
// machine has). The items are independent: `work` is a pure routine that puts its result
// in place by index, so that the outcome is the same for any number of threads. All
// threads have ended when this returns.
//
// `stop`, where there is one, is asked between two items, on the calling thread only, and
// ends the run early; the return is then false. While it takes its time (it may ask the
// user) the other threads go on. An error of `work` ends the run and is thrown here, of
// several that of the lowest index; one of `stop` comes through as it is. Where the
// system gives fewer threads, those there are do the work.
bool ForEachInParallel(size_t count, const std::function<void(size_t)>& work,
                       const std::function<bool()>& stop = {}, unsigned threads = 0);

} // namespace vardenix
