#include "updater/ShownText.h"

#include "files/BinaryReader.h"
#include "texts/TextLines.h"
#include "texts/Windows1252.h"

namespace vardenix {

std::string ReadShownText(const std::string& path) {
    constexpr uint64_t longest = 4 << 20;
    const FileBytes bytes = ReadWholeFile(path, longest);
    std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string_view line;
    std::string text;
    while (NextLine(rest, line))
        text += Utf8FromBytes(line) + "\n";
    return text;
}

} // namespace vardenix
