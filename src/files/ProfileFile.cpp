#include "files/ProfileFile.h"

#include "files/BinaryReader.h"
#include "files/StagedFile.h"
#include "texts/Cutting.h"
#include "texts/TextLines.h"

namespace vardenix {

namespace {

enum class LineKind { Other, Section, Value };

// One line taken apart; the views borrow it.
struct ParsedLine {
    LineKind Kind = LineKind::Other;
    std::string_view Name; // of the section or of the key
    std::string_view Value;
};

ParsedLine ParseLine(std::string_view line) {
    line = TrimBlanks(line.substr(0, line.find('\0')));
    if (line.empty() || line.front() == ';')
        return {};
    if (line.front() == '[')
        return {LineKind::Section, TrimBlanks(line.substr(1, line.find(']') - 1)), {}};
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return {};
    return {LineKind::Value, TrimBlanks(line.substr(0, equals)),
            TrimBlanks(line.substr(equals + 1))};
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

} // namespace

ProfileFile::ProfileFile(std::string bytes)
    : bytes_(std::move(bytes)), upper_(UpperCase(bytes_)) {
    Values* current = nullptr;
    std::string_view rest = upper_;
    std::string_view line;
    while (NextLine(rest, line)) {
        const ParsedLine parsed = ParseLine(line);
        if (parsed.Kind == LineKind::Section) {
            const auto [place, isFirst] = sections_.try_emplace(parsed.Name);
            current = isFirst ? &place->second : nullptr;
        } else if (parsed.Kind == LineKind::Value && current != nullptr) {
            // Names are found in upper case, values are kept as they are written.
            const auto offset = static_cast<size_t>(parsed.Value.data() - upper_.data());
            current->try_emplace(parsed.Name, parsed.Value.empty()
                                                  ? std::string_view{}
                                                  : std::string_view(bytes_).substr(
                                                        offset, parsed.Value.size()));
        }
    }
}

const std::string_view* ProfileFile::Find(std::string_view section,
                                          std::string_view key) const {
    const auto values = sections_.find(UpperCase(section));
    if (values == sections_.end())
        return nullptr;
    const auto value = values->second.find(UpperCase(key));
    return value == values->second.end() ? nullptr : &value->second;
}

std::string ProfileFile::Read(std::string_view section, std::string_view key) const {
    const std::string_view* found = Find(section, key);
    if (found == nullptr)
        return {};
    std::string_view value = *found;
    if (IsQuoted(value))
        value = value.substr(1, value.size() - 2);
    return std::string(value.substr(0, ProfileValueBytes));
}

bool ProfileFile::Has(std::string_view section, std::string_view key) const {
    return Find(section, key) != nullptr;
}

namespace {

// Thousands of times what any profile needs.
constexpr uint64_t LongestProfile = uint64_t{16} << 20;

} // namespace

ProfileFile ReadProfileFile(std::string_view path) {
    const FileBytes bytes = ReadWholeFile(path, LongestProfile);
    const auto span = bytes.Span();
    return ProfileFile({reinterpret_cast<const char*>(span.data()), span.size()});
}

ProfileWriter::ProfileWriter(std::string_view bytes) {
    size_t current = 0;
    bool first = true; // only the first section of a name is found again
    std::string_view line;
    while (NextLine(bytes, line)) {
        const ParsedLine parsed = ParseLine(line);
        if (parsed.Kind == LineKind::Section) {
            current = sections_.size();
            sections_.emplace_back();
            first = byName_.try_emplace(UpperCase(parsed.Name), current).second;
        } else if (parsed.Kind == LineKind::Value && first) {
            Section& section = sections_[current];
            section.LineOfKey.try_emplace(UpperCase(parsed.Name), section.Lines.size());
        }
        sections_[current].Lines.emplace_back(line);
    }
}

size_t ProfileWriter::SectionNamed(std::string_view name) {
    const auto [place, isNew] = byName_.try_emplace(UpperCase(name), sections_.size());
    if (isNew) {
        sections_.emplace_back();
        sections_.back().Lines.push_back("[" + std::string(name) + "]");
    }
    return place->second;
}

void ProfileWriter::Write(std::string_view section, std::string_view key,
                          std::string_view value) {
    value = value.substr(0, value.find_first_of(std::string_view("\r\n\0", 3)));
    const bool quotes = IsQuoted(value) || TrimBlanks(value) != value;
    const std::string line = std::string(key) + (quotes ? "=\"" : "=") +
                             std::string(value) + (quotes ? "\"" : "");

    Section& target = sections_[SectionNamed(section)];
    const auto known = target.LineOfKey.find(UpperCase(key));
    if (known != target.LineOfKey.end()) {
        target.Lines[known->second] = line;
        return;
    }
    // The empty lines that part this section from the next stay at its end.
    size_t end = target.Lines.size();
    while (end > 1 && TrimBlanks(target.Lines[end - 1]).empty())
        --end;
    target.Lines.insert(target.Lines.begin() + static_cast<std::ptrdiff_t>(end), line);
    target.LineOfKey.emplace(UpperCase(key), end);
}

std::string ProfileWriter::Text() const {
    std::string text;
    for (const Section& section : sections_)
        for (const std::string& line : section.Lines)
            text += line + "\r\n";
    return text;
}

void ProfileWriter::Save(std::string_view path) const {
    StagedFile file(path);
    file.WriteText(Text());
    file.Commit();
}

} // namespace vardenix
