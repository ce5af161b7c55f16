#include "program/ConfigurationFile.h"

#include "files/FileNames.h"
#include "platform/Guid.h"
#include "program/ProgramVersion.h"
#include "program/SettingsList.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace vardenix {

namespace {

std::string IniPath(std::string_view appPath) {
    return WithTrailingSlash(appPath) + "VX.ini";
}

float ClampToFloat(double value) {
    constexpr double Largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -Largest, Largest));
}

// Fills a setting from its key.
struct Reader {
    const ProfileFile& File;

    void operator()(std::string_view section, std::string_view key,
                    std::string& value) const {
        value = ReadIni(section, key, File);
    }
    void operator()(std::string_view section, std::string_view key,
                    uint32_t& value) const {
        value = HexToLong(ReadIni(section, key, File));
    }
    void operator()(std::string_view section, std::string_view key, bool& value) const {
        value = Number(section, key) != 0;
    }
    void operator()(std::string_view section, std::string_view key,
                    int16_t& value) const {
        value = ClampToInt16(Number(section, key));
    }
    void operator()(std::string_view section, std::string_view key,
                    int32_t& value) const {
        value = ClampToInt32(Number(section, key));
    }
    void operator()(std::string_view section, std::string_view key, float& value) const {
        value = ClampToFloat(Number(section, key));
    }

    double Number(std::string_view section, std::string_view key) const {
        return Val(ReadIni(section, key, File));
    }
};

// Writes a setting under its key.
struct Writer {
    ProfileWriter& File;

    void operator()(std::string_view section, std::string_view key,
                    const std::string& value) const {
        WriteIni(section, key, value, File);
    }
    void operator()(std::string_view section, std::string_view key,
                    uint32_t value) const {
        WriteIniHex(section, key, value, File);
    }
    void operator()(std::string_view section, std::string_view key, bool value) const {
        WriteIniNumber(section, key, value ? -1 : 0, File);
    }
    void operator()(std::string_view section, std::string_view key, int16_t value) const {
        WriteIniNumber(section, key, value, File);
    }
    void operator()(std::string_view section, std::string_view key, int32_t value) const {
        WriteIniNumber(section, key, value, File);
    }
    void operator()(std::string_view section, std::string_view key, float value) const {
        WriteIni(section, key, ShortestText(value), File);
    }
};

bool HasRow(const ProfileFile& file, size_t row) {
    bool has = false;
    HeightColorEntry unused;
    VisitHeightColor(row, unused,
                     [&](std::string_view section, std::string_view key, const auto&) {
                         has = has || file.Has(section, key);
                     });
    return has;
}

// A row that the file says nothing of reads as zeros, but only where a later row has
// keys: ListNumber is a number that anybody may have typed, and what it promises beyond
// the last key of the file is not worth the memory.
std::vector<HeightColorEntry> ReadHeightColors(const ProfileFile& file) {
    const double promised = Val(ReadIni("HEIGHT_COL_LIST", "ListNumber", file));
    auto rows = static_cast<size_t>(
        std::clamp(ClampToInt32(promised), int32_t{0}, MaxHeightColors));
    while (rows > 0 && !HasRow(file, rows))
        --rows;
    std::vector<HeightColorEntry> list(rows);
    for (size_t i = 0; i < rows; ++i)
        VisitHeightColor(i + 1, list[i], Reader{file});
    return list;
}

void WriteHeightColors(const std::vector<HeightColorEntry>& list, ProfileWriter& file) {
    WriteIniNumber("HEIGHT_COL_LIST", "ListNumber", static_cast<double>(list.size()),
                   file);
    for (size_t i = 0; i < list.size(); ++i)
        VisitHeightColor(i + 1, list[i], Writer{file});
}

ProfileWriter ProfileOf(const Configuration& configuration) {
    ProfileWriter file;
    const Writer write{file};
    WriteIni("SYSTEM", "Application", "Vardenix", file);
    WriteIni("SYSTEM", "Version", ProgramVersion(), file);
    VisitSystemAndFiles(configuration, write);
    VisitColorsAndSizes(configuration, write);
    VisitFonts(configuration, write);
    VisitLastSettings(configuration, write);
    VisitBinSettings(configuration, write);
    WriteHeightColors(configuration.HeightColorList, file);
    VisitAreasAndPaths(configuration, write);
    return file;
}

} // namespace

Configuration ReadConfiguration(std::string_view appPath) {
    const std::string path = IniPath(appPath);
    if (FileExists(path))
        return ReadConfiguration(ReadProfileFile(path));
    Configuration configuration;
    configuration.P = NewGuid();
    return configuration;
}

Configuration ReadConfiguration(const ProfileFile& file) {
    Configuration configuration;
    const Reader read{file};
    VisitSystemAndFiles(configuration, read);
    VisitColorsAndSizes(configuration, read);
    VisitFonts(configuration, read);
    VisitLastSettings(configuration, read);
    VisitBinSettings(configuration, read);
    configuration.HeightColorList = ReadHeightColors(file);
    VisitAreasAndPaths(configuration, read);
    if (configuration.P.empty())
        configuration.P = NewGuid();
    return configuration;
}

void WriteConfiguration(std::string_view appPath, const Configuration& configuration) {
    ProfileOf(configuration).Save(IniPath(appPath));
}

std::string ConfigurationText(const Configuration& configuration) {
    return ProfileOf(configuration).Text();
}

std::string ReadIni(std::string_view section, std::string_view key,
                    const ProfileFile& file) {
    return file.Read(section, key);
}

void WriteIni(std::string_view section, std::string_view key, std::string_view value,
              ProfileWriter& file) {
    file.Write(section, UpperCase(key), value);
}

void WriteIniNumber(std::string_view section, std::string_view key, double value,
                    ProfileWriter& file) {
    WriteIni(section, key, Format0(value), file);
}

void WriteIniHex(std::string_view section, std::string_view key, uint32_t value,
                 ProfileWriter& file) {
    std::array<char, 8> digits{};
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
    WriteIni(section, key, UpperCase({digits.data(), result.ptr}), file);
}

uint32_t HexToLong(std::string_view text) {
    uint32_t value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (result.ec == std::errc::result_out_of_range)
        return std::numeric_limits<uint32_t>::max();
    return value;
}

} // namespace vardenix
