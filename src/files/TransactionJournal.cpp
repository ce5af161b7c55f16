#include "files/TransactionJournal.h"

#include "files/StagedFile.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <string_view>

namespace vardenix {

namespace {

constexpr std::string_view Heading = "Vardenix journal 1\n";
constexpr size_t EndBytes = sizeof "end 01234567"; // its line end counted, not the zero

std::string Hex(uint32_t value, int digits) {
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%0*x", digits, value);
    return text.data();
}

std::string Escaped(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 32 || byte == 127 || c == '%')
            text += "%" + Hex(byte, 2);
        else
            text += c;
    }
    return text;
}

template <typename Number>
bool Take(std::string_view text, Number& value, int base = 10) {
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc{} && end == text.data() + text.size();
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string name;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            name += text[i];
            continue;
        }
        unsigned byte = 0;
        if (i + 2 >= text.size() || !Take(text.substr(i + 1, 2), byte, 16))
            return std::nullopt;
        name += static_cast<char>(byte);
        i += 2;
    }
    return name;
}

std::string_view UpTo(std::string_view& rest, char end) {
    const std::string_view part = rest.substr(0, rest.find(end));
    rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    return part;
}

bool TakeIdentity(std::string_view words, FileIdentity& identity) {
    if (words == "nothing")
        return true;
    identity.Present = true;
    return Take(UpTo(words, ' '), identity.Device) &&
           Take(UpTo(words, ' '), identity.Inode) &&
           Take(UpTo(words, ' '), identity.Size) &&
           Take(UpTo(words, ' '), identity.Seconds) && Take(words, identity.Nanoseconds);
}

// What follows a line's first word; nothing when it is another line than expected.
std::optional<std::string_view> Line(std::string_view& rest, std::string_view word) {
    std::string_view line = UpTo(rest, '\n');
    if (UpTo(line, ' ') != word)
        return std::nullopt;
    return line;
}

std::optional<JournalEntry> TakeEntry(std::string_view& rest) {
    JournalEntry entry;
    const auto name = Line(rest, "file");
    auto staged = Line(rest, "staged");
    const auto replaces = Line(rest, "replaces");
    if (!name || !staged || !replaces)
        return std::nullopt;
    const auto plain = Unescaped(*name);
    if (!plain || plain->empty() || plain->find('\0') != std::string::npos ||
        !Take(UpTo(*staged, ' '), entry.Size) || !Take(*staged, entry.Checksum, 16) ||
        !TakeIdentity(*replaces, entry.Replaced))
        return std::nullopt;
    entry.Name = *plain;
    return entry;
}

} // namespace

std::string JournalText(const std::vector<JournalEntry>& entries) {
    std::string text(Heading);
    for (const JournalEntry& entry : entries) {
        text += "file " + Escaped(entry.Name) + "\nstaged " + std::to_string(entry.Size) +
                " " + Hex(entry.Checksum, 8) + "\nreplaces ";
        const FileIdentity& old = entry.Replaced;
        if (old.Present)
            text += std::to_string(old.Device) + " " + std::to_string(old.Inode) + " " +
                    std::to_string(old.Size) + " " + std::to_string(old.Seconds) + " " +
                    std::to_string(old.Nanoseconds) + "\n";
        else
            text += "nothing\n";
    }
    return text + "end " + Hex(ChecksumOf(std::as_bytes(std::span(text))), 8) + "\n";
}

std::optional<std::vector<JournalEntry>> ParseJournal(std::span<const std::byte> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()),
                                bytes.size());
    if (!text.starts_with(Heading) || text.size() < Heading.size() + EndBytes)
        return std::nullopt;
    const size_t endAt = text.size() - EndBytes;
    if (text.substr(endAt) != "end " + Hex(ChecksumOf(bytes.first(endAt)), 8) + "\n")
        return std::nullopt;
    std::vector<JournalEntry> entries;
    std::string_view rest = text.substr(Heading.size(), endAt - Heading.size());
    while (!rest.empty()) {
        const auto entry = TakeEntry(rest);
        if (!entry)
            return std::nullopt;
        entries.push_back(*entry);
    }
    if (entries.empty())
        return std::nullopt;
    return entries;
}

std::filesystem::path JournalOf(const std::filesystem::path& folder) {
    return folder / "vardenix.journal";
}

std::filesystem::path AsideOf(const std::filesystem::path& journal) {
    return journal.native() + ".aside";
}

} // namespace vardenix
