#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vardenix {

// The longest value that is read, in bytes; what is longer is cut there.
constexpr size_t ProfileValueBytes = 750;

// A profile file as it is read: "[section]" lines and "KEY=value" lines under them. Names
// are found without regard to the case of the letters A to Z. Of several sections of one
// name only the first counts, and in it the first line of a key. Blanks round names and
// values do not count, nor does one pair of quotes, single or double, round a value.
// Lines that begin with ";", that have no "=", or that stand before the first section are
// passed over, and so is the rest of a line behind a NUL. Any bytes are accepted; memory
// stays within a small multiple of them.
class ProfileFile {
public:
    explicit ProfileFile(std::string bytes);
    // The index points into the bytes.
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;

    // Empty when the file has no such key.
    std::string Read(std::string_view section, std::string_view key) const;
    bool Has(std::string_view section, std::string_view key) const;

private:
    using Values = std::unordered_map<std::string_view, std::string_view>;

    const std::string_view* Find(std::string_view section, std::string_view key) const;

    std::string bytes_;
    std::string upper_; // the same bytes in upper case: the names of the index
    std::unordered_map<std::string_view, Values> sections_;
};

// Errors as of ReadWholeFile: 53 when there is no such file, 70, 75 and so on.
ProfileFile ReadProfileFile(std::string_view path);

// A profile file as it is written: sections in order of first appearance, keys in order
// within their section, lines ended by CR LF.
class ProfileWriter {
public:
    ProfileWriter() = default;
    // Begins with what a file holds; comments and unknown lines stay where they are.
    explicit ProfileWriter(std::string_view bytes);

    // Replaces the line of a key that is there, else adds one at the end of its section.
    // A value holds one line: it ends at the first line end or NUL. One that reading
    // would shorten, for its quotes or outer blanks, is put in quotes. `key` holds no
    // "=", `section` no "]".
    void Write(std::string_view section, std::string_view key, std::string_view value);

    std::string Text() const;
    // Whole, or not at all: the old file stands until the new one is on the disk. Errors
    // as of StagedFile.
    void Save(std::string_view path) const;

private:
    struct Section {
        std::vector<std::string> Lines; // the first is the header; none above the first
        std::unordered_map<std::string, size_t> LineOfKey; // by upper-case name
    };

    size_t SectionNamed(std::string_view name);

    std::vector<Section> sections_{1}; // element 0: what stands before the first section
    std::unordered_map<std::string, size_t> byName_; // by upper-case name
};

} // namespace vardenix
