#pragma once

#include "grounds/SampleLand.h"

#include <cstdint>

namespace vardenix::tests {

// What the brush reaches on the sample, counted by the maker's own truth.
struct BrushFigures {
    int Windows = 0;
    int CleanWindows = 0; // without a bad seam
    int Seams = 0;
    int BadSeams = 0;
    int Posts = 0; // painted
    int WrongGround = 0;
    int ChangedOutside = 0;

    double FittingSeams() const { return 1 - Share(BadSeams, Seams); }
    double Clean() const { return Share(CleanWindows, Windows); }
    double RightGround() const { return 1 - Share(WrongGround, Posts); }

private:
    static double Share(int part, int whole) {
        return whole == 0 ? 0 : static_cast<double>(part) / whole;
    }
};

// Windows of 3 by 3 to 8 by 8 posts of which at least three tenths are transitions: their
// ring, or all but their ring, is hidden and filled.
BrushFigures HiddenWindows(const SampleLand& land, const LearnedLand& learned,
                           int windows, bool middle);

// Squares of 3 to 8 posts anywhere on land are painted with the grounds in turn.
BrushFigures Paints(const SampleLand& land, const LearnedLand& learned, int paints,
                    bool inside);

// Corners of tiles whose learned ground is the one that most corners of their true ground
// have, the other way round too; as a share of all.
double RightCorners(const SampleLand& land, const LearnedLand& learned);

} // namespace vardenix::tests
