#pragma once

#include "files/BinaryReader.h"
#include "program/Change.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// A change as bytes, little-endian: its name and time, which papers it touches, and what
// it has made of each. Features are left out, since they are never unsaved.
//
// Bytes that are read may be anybody's: counts are checked against the bytes that are
// there before anything is allocated, and what a change says of itself must hold
// together; error 62 or 9 otherwise. Whether it fits the papers is asked of RequireFits.
void AppendChange(std::vector<std::byte>& bytes, const Change& change);
Change ReadChange(BinaryReader& reader);
// Passes over one, and tells what ReadChange would without making anything of it.
struct ChangeHead {
    std::string Name; // of any bytes
    std::chrono::system_clock::time_point Time{};
    uint8_t Papers = 0; // PaperBit of each
};
ChangeHead ReadChangeHead(BinaryReader& reader);

uint8_t PapersOf(const Change& change); // but for the features

// Error 9 where a serial of the change lies outside of arrays of so many values.
void RequireFits(const Change& change, int32_t posts, int32_t heights);

// Since 1970; any number is read, and what no clock shows is the beginning of 1970.
int64_t MillisecondsOf(std::chrono::system_clock::time_point time);
std::chrono::system_clock::time_point TimeOfMilliseconds(int64_t count);

// Texts and numbers beside changes.
void AppendText(std::vector<std::byte>& bytes, const std::string& text);
void AppendInt64(std::vector<std::byte>& bytes, int64_t value);
std::string ReadText(BinaryReader& reader);
int64_t ReadInt64(BinaryReader& reader);

} // namespace vardenix
