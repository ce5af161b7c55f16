#pragma once

#include "files/Transaction.h"
#include "platform/ToolRunner.h"

#include <functional>
#include <string>
#include <vector>

namespace vardenix {

// A Targa file that becomes a DDS file: block compression 1 with one-bit alpha, without
// mip maps.
struct ConversionJob {
    std::string SourceFile; // full paths
    std::string TargetFile;
};
using ConversionQueue = std::vector<ConversionJob>;

// Stages the result of every job, in the order of the queue; they take their places when
// the caller commits. Pictures are compressed on all cores; `stop`, where there is one,
// is asked between two of them and ends the run early (false). Error 481 for a source
// that is no Targa picture, and the system's refusals, each with the file.
bool RunConversionQueue(const ToolRunner& tools, const ConversionQueue& queue,
                        Transaction& files, const std::function<bool()>& stop = {});
// Runs a queue in a transaction of its own, to its end.
void RunConversionQueue(const ToolRunner& tools, const ConversionQueue& queue);

} // namespace vardenix
