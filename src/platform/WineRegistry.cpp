#include "platform/WineRegistry.h"

#include "files/FileNames.h"
#include "texts/Cutting.h"
#include "texts/TextLines.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// Collects UTF-16 units and UTF-8 bytes into one UTF-8 text.
class TextCollector {
public:
    void Byte(char c) {
        EndPair();
        text_ += c;
    }
    void Unit(uint32_t unit) {
        const bool isLow = unit >= 0xDC00 && unit <= 0xDFFF;
        if (high_ != 0 && isLow) {
            Point(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00));
            high_ = 0;
            return;
        }
        EndPair();
        if (unit >= 0xD800 && unit <= 0xDBFF)
            high_ = unit;
        else
            Point(isLow ? Replacement : unit);
    }
    std::string Text() {
        EndPair();
        return text_;
    }

private:
    static constexpr uint32_t Replacement = 0xFFFD;

    void EndPair() {
        if (high_ != 0)
            Point(Replacement);
        high_ = 0;
    }
    void Point(uint32_t point) {
        if (point < 0x80) {
            text_ += static_cast<char>(point);
        } else if (point < 0x800) {
            text_ += static_cast<char>(0xC0 | (point >> 6));
            Tail(point, 0);
        } else if (point < 0x10000) {
            text_ += static_cast<char>(0xE0 | (point >> 12));
            Tail(point, 6);
            Tail(point, 0);
        } else {
            text_ += static_cast<char>(0xF0 | (point >> 18));
            Tail(point, 12);
            Tail(point, 6);
            Tail(point, 0);
        }
    }
    void Tail(uint32_t point, int shift) {
        text_ += static_cast<char>(0x80 | ((point >> shift) & 0x3F));
    }

    std::string text_;
    uint32_t high_ = 0; // the first half of a pair, waiting for the second
};

// Takes up to `most` digits of a base off the beginning; nothing when there is none.
std::optional<uint32_t> TakeDigits(std::string_view& rest, size_t most, int base) {
    uint32_t value = 0;
    const size_t length = std::min(rest.size(), most);
    const auto result = std::from_chars(rest.data(), rest.data() + length, value, base);
    if (result.ec != std::errc{})
        return std::nullopt;
    rest.remove_prefix(static_cast<size_t>(result.ptr - rest.data()));
    return value;
}

// What stands behind a backslash.
void TakeEscape(std::string_view& rest, TextCollector& text) {
    if (const auto octal = TakeDigits(rest, 3, 8)) {
        text.Unit(*octal);
        return;
    }
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == 'x') {
        if (const auto unit = TakeDigits(rest, 4, 16))
            text.Unit(*unit);
        else
            text.Byte(c);
        return;
    }
    constexpr std::string_view Letters = "abefnrtv";
    constexpr std::string_view Meanings = "\a\b\x1B\f\n\r\t\v";
    const size_t letter = Letters.find(c);
    text.Byte(letter == std::string_view::npos ? c : Meanings[letter]);
}

// Takes a text up to and including its closing character; nothing when that is missing.
std::optional<std::string> TakeText(std::string_view& rest, char closing) {
    TextCollector text;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == closing)
            return text.Text();
        if (c == '\\' && !rest.empty())
            TakeEscape(rest, text);
        else
            text.Byte(c);
    }
    return std::nullopt;
}

bool TakePrefix(std::string_view& rest, std::string_view prefix) {
    if (!rest.starts_with(prefix))
        return false;
    rest.remove_prefix(prefix.size());
    return true;
}

// The bytes "43,00,3a,00" of a string that was stored without its end; they go on behind
// a backslash in the lines that follow.
std::string TextOfUnits(std::string_view line, std::string_view following) {
    TextCollector text;
    std::optional<uint32_t> low;
    do {
        line = TrimBlanks(line);
        while (const auto byte = TakeDigits(line, 2, 16)) {
            if (low)
                text.Unit(*low | *byte << 8);
            low = low ? std::nullopt : byte;
            if (!TakePrefix(line, ","))
                break;
        }
    } while (line == "\\" && NextLine(following, line));
    return text.Text();
}

// What stands behind the "=" of a value; `following` are the lines after it.
std::string TextOfValue(std::string_view value, std::string_view following) {
    if (TakePrefix(value, "\""))
        return TakeText(value, '"').value_or(std::string());
    if (TakePrefix(value, "hex(1):"))
        return TextOfUnits(value, following);
    if (TakePrefix(value, "dword:"))
        if (const auto number = TakeDigits(value, 8, 16))
            return std::to_string(static_cast<int32_t>(*number));
    return {};
}

std::optional<std::string> TakeName(std::string_view& line) {
    std::optional<std::string> name;
    if (TakePrefix(line, "@"))
        name.emplace();
    else if (TakePrefix(line, "\""))
        name = TakeText(line, '"');
    if (!TakePrefix(line, "="))
        name.reset();
    return name;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool HasDriveLetter(std::string_view value) {
    return value.size() >= 2 && IsLetter(value[0]) && value[1] == ':' &&
           (value.size() == 2 || value[2] == '\\' || value[2] == '/');
}

// The folder that stands for a drive, without a slash at the end.
std::optional<std::string> FolderOfDrive(const std::string& prefix, char letter) {
    const char lower = letter < 'a' ? static_cast<char>(letter - 'A' + 'a') : letter;
    std::error_code error;
    const fs::path link = fs::path(prefix) / "dosdevices" / (std::string{lower} + ":");
    fs::path folder = fs::canonical(link, error);
    // The usual first drive, in a prefix that was copied without its links.
    if (error && lower == 'c')
        folder = fs::canonical(fs::path(prefix) / "drive_c", error);
    if (error)
        return std::nullopt;
    return folder == folder.root_path() ? std::string() : TextOfPath(folder);
}

} // namespace

std::string WineRegistryText(std::string_view hive, std::string_view key,
                             std::string_view name) {
    const std::string wantedKey = UpperCase(key);
    const std::string wantedName = UpperCase(name);
    bool inKey = false;
    std::string_view line;
    while (NextLine(hive, line)) {
        if (TakePrefix(line, "[")) {
            const auto found = TakeText(line, ']');
            inKey = found && UpperCase(*found) == wantedKey;
        } else if (inKey) {
            const auto found = TakeName(line);
            if (found && UpperCase(*found) == wantedName)
                return TextOfValue(line, hive);
        }
    }
    return {};
}

std::string PathOfWine(const std::string& prefix, const std::string& value) {
    if (!HasDriveLetter(value))
        return value;
    const auto folder = FolderOfDrive(prefix, value[0]);
    if (!folder)
        return {};
    std::string rest = value.substr(2);
    std::replace(rest.begin(), rest.end(), '\\', '/');
    return folder->empty() && rest.empty() ? "/" : *folder + rest;
}

} // namespace vardenix
