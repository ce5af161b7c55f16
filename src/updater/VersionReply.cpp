#include "updater/VersionReply.h"

#include "texts/Cutting.h"
#include "texts/Windows1252.h"
#include "updater/ReplyHeader.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace vardenix {

namespace {

using Answer = VersionReply::Answer;

constexpr size_t LongestVersion = 64;

// The text between two marks, in whatever case they are.
std::optional<std::string_view> Between(std::string_view text, std::string_view open,
                                        std::string_view close) {
    const size_t from = FindAnyCase(text, open);
    if (from == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = text.substr(from + open.size());
    const size_t end = FindAnyCase(rest, close);
    if (end == std::string_view::npos)
        return std::nullopt;
    return rest.substr(0, end);
}

std::vector<std::string> FieldsOfBody(std::string_view body) {
    const std::string line = ReplaceAll(std::string(body), "\r\n", " ");
    std::string_view rest = TrimBlanks(line);
    std::vector<std::string> fields;
    while (true) {
        const size_t star = rest.find('*');
        fields.emplace_back(rest.substr(0, star));
        if (star == std::string_view::npos)
            return fields;
        rest.remove_prefix(star + 1);
    }
}

// Goes into a title, the log and the registry.
bool IsVersion(const std::string& text) {
    return !text.empty() && text.size() <= LongestVersion &&
           std::ranges::none_of(
               text, [](unsigned char letter) { return letter < ' ' || letter == 127; });
}

std::string FieldOrNone(const std::vector<std::string>& fields, size_t index) {
    return index < fields.size() ? Utf8FromBytes(TrimBlanks(fields[index])) : "";
}

VersionReply ReadBody(std::string_view body) {
    const std::vector<std::string> fields = FieldsOfBody(body);
    const std::string_view command = TrimBlanks(fields[0]);
    if (command == "#Current")
        return {Answer::Current, {}, FieldOrNone(fields, 1), {}};
    if (command == "#OldinDB")
        return {Answer::OldInDatabase, {}, FieldOrNone(fields, 2), {}};
    const bool major = command == "#Update";
    if ((major || command == "#Patch") && fields.size() > 2 && IsVersion(fields[2]))
        return {major ? Answer::MajorUpdate : Answer::MinorUpdate,
                fields[1],
                Utf8FromBytes(fields[2]),
                {}};
    return {Answer::Unreadable, {}, {}, {}};
}

} // namespace

VersionReply ReadVersionReply(std::string_view text) {
    if (const std::string why = WhyNotTaken(text); !why.empty())
        return {Answer::NotTaken, {}, {}, why};
    const auto title = Between(text, "<TiTle>", "</title>");
    if (!title)
        return {};
    if (*title != "Vardenix version check")
        return {Answer::WrongPage, {}, {}, {}};
    const auto body = Between(text, "<body>", "</body>");
    return body ? ReadBody(*body) : VersionReply{};
}

std::string WithCrLf(std::string_view text) {
    std::string lines;
    lines.reserve(text.size() + text.size() / 16);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            lines += text[i];
            continue;
        }
        lines += "\r\n";
        if (text.substr(i, 2) == "\r\n")
            ++i;
    }
    return lines;
}

} // namespace vardenix
