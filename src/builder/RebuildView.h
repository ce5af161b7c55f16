#pragma once

#include "texts/RuntimeError.h"

#include <cstdint>
#include <span>
#include <string>

namespace vardenix {

// What a rebuild shows of itself while it runs, and where it asks whether to go on. The
// window fills it in; the command line and tests have plain ones. Texts are UTF-8.
class RebuildView {
public:
    RebuildView() = default;
    RebuildView(const RebuildView&) = delete;
    RebuildView& operator=(const RebuildView&) = delete;
    virtual ~RebuildView() = default;

    // PB1 is the bar of the current level, PB2 that of the whole run.
    virtual void ResetPBs() = 0;
    virtual void Increase_PBs() = 0;
    virtual void Increase_PB1() = 0;
    virtual void SetPB1_Max(int32_t value) = 0;
    virtual void SetPB1_val(int32_t value) = 0;
    virtual void SetPB2_Max(int32_t value) = 0;
    virtual void SetPB2_val(int32_t value) = 0;
    virtual void SetStatus(const std::string& text) = 0;
    virtual void SetLabel2(const std::string& text) = 0;
    virtual void SetLblTime(const std::string& text) = 0;
    // The run is at its `step`th part of `steps`, both from 1.
    virtual void BeginStep(int step, int steps) = 0;

    // A far tile that was just made, as bytes of a container; shown now and then.
    virtual void ShowFartile(std::span<const uint8_t> day, std::span<const uint8_t> night,
                             int32_t farSize) = 0;
    // All is made and takes its place: from here on nobody asks whether to go on.
    virtual void BeginTakingPlaces() = 0;

    // Lets waiting window events be handled. It is called once a row or a post, so it
    // is up to the window how often that really happens.
    virtual void LetEventsThrough() = 0;
    // Whether the user wants the run to end, after having been asked.
    virtual bool StopWanted() = 0;
    // Whole seconds of a clock that never jumps.
    virtual int64_t Seconds() = 0;

    // The events, and then error 32755 when the run is to end.
    void GoOn();
};

// What a run ends in that the user has stopped.
RuntimeError RebuildStopped();

// The bars that the window draws.
struct RebuildBar {
    int32_t Value = 0;
    int32_t Maximum = 100;

    static constexpr int32_t FullWidth = 6375; // twips
    // The drawn width in twips; 0 for a maximum of 0.
    double Width() const;
};

// Steps of PB2 for a run of cmdStart and of cmdStartElv: rows of blocks of all levels
// that it writes. Of the elevations, reading an .elv file counts as one.
int32_t StepsOfRebuild(int32_t mapWidth, bool makeL3);
int32_t StepsOfElevationRebuild(int32_t mapWidth, bool fromElvFile);

} // namespace vardenix
