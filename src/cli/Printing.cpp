#include "cli/Printing.h"

#include "files/FileNames.h"
#include "platform/Clock.h"
#include "texts/RuntimeError.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace vardenix {

namespace {

// Of the standard output; 0 while nothing has failed.
int firstFailure = 0;

void Write(std::FILE* stream, std::string_view text) {
    const std::string shown =
        ::isatty(::fileno(stream)) == 1 ? ForTerminal(text) : std::string(text);
    const bool written =
        std::fwrite(shown.data(), 1, shown.size(), stream) == shown.size() &&
        std::fputc('\n', stream) != EOF;
    if (!written && stream == stdout && firstFailure == 0)
        firstFailure = errno;
}

std::string PlainText(const Json& json) {
    const auto* text = std::get_if<std::string>(&json.Get());
    return text != nullptr ? *text : TextOf(json);
}

// A character at the beginning of a text: how many bytes it has, none when they are no
// UTF-8, and its number.
struct Character {
    size_t Length;
    uint32_t Number;
};

Character FirstOf(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
    const uint8_t lead = byte(0);
    if (lead < 0x80)
        return {1, lead};
    const size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                          : lead >= 0xE0 && lead < 0xF0 ? 3
                          : lead >= 0xF0 && lead < 0xF5 ? 4
                                                        : 0;
    if (length == 0 || text.size() < length)
        return {0, 0};
    uint32_t number = lead & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {0, 0};
        number = number << 6 | (byte(i) & 0x3FU);
    }
    return {length, number};
}

// Beside the control characters those that turn the direction of what follows.
bool IsObeyed(uint32_t number) {
    if (number == '\n' || number == '\t')
        return false;
    return number < 0x20 || (number >= 0x7F && number < 0xA0) ||
           (number >= 0x202A && number <= 0x202E) ||
           (number >= 0x2066 && number <= 0x2069);
}

std::string Escaped(const char* format, uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

} // namespace

void Print(std::string_view line) { Write(stdout, line); }

void Tell(std::string_view text) { Write(stderr, text); }

void PrintJson(const Json& json) { Print(TextOf(json)); }

void Listing::Add(JsonObject row, const std::string& sentence) {
    if (asJson_)
        rows_.emplace_back(std::move(row));
    else
        Print(sentence);
}

void Listing::End() {
    if (asJson_)
        PrintJson(std::move(rows_));
}

std::string FullTime(std::chrono::system_clock::time_point time) {
    const LocalTime then = LocalTimeOf(time);
    return ShortMonthDate(then) + " " + HoursMinutesSeconds(then);
}

void PrintValues(const JsonObject& object, bool asJson) {
    if (asJson) {
        PrintJson(object);
        return;
    }
    for (const auto& [name, value] : object)
        Print(name + ": " + PlainText(value));
}

void FinishPrinting() {
    if (std::fflush(stdout) != 0 && firstFailure == 0)
        firstFailure = errno;
    if (firstFailure != 0)
        ThrowSystemError(firstFailure, "writing", "the standard output");
}

void HoldStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF)
            // Takes the lowest number that is free, which is this one. Results that
            // nobody gets are still an error: this output cannot be written.
            ::open("/dev/null", stream == STDERR_FILENO ? O_WRONLY : O_RDONLY);
}

std::string ForTerminal(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const Character first = FirstOf(text);
        const size_t length = first.Length == 0 ? 1 : first.Length;
        if (first.Length == 0)
            shown += Escaped("\\x%02x", static_cast<uint8_t>(text[0]));
        else if (IsObeyed(first.Number))
            shown += Escaped("\\u%04x", first.Number);
        else
            shown += text.substr(0, length);
        text.remove_prefix(length);
    }
    return shown;
}

std::string NameOnDisk(const std::string& path) { return ShownPath(path); }

} // namespace vardenix
