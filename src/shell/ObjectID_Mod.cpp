#include "shell/ObjectID_Mod.h"

#include "base/Bytes.h"
#include "base/Files.h"
#include "base/Text.h"

#include <algorithm>
#include <array>

namespace morlik
{

namespace
{

struct CatalogueSection
{
    VersionCode Game; ///< `kNoLevel` for the static meshes, which all games share
    bool HasValue;
    bool UpperCase;
};

constexpr std::array<CatalogueSection, 6> kSections{{
    {kTR4, false, false},
    {kNoLevel, false, false},
    {kTR3, true, true},
    {kTR2, true, false},
    {kTR1, true, false},
    {kTR5, true, false},
}};

/// Capitals of an 8-bit Western text, accented letters included.
std::string Capitals(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        const bool small =
            (code >= 'a' && code <= 'z') || (code >= 0xe0 && code != 0xf7 && code != 0xff);
        return small ? static_cast<char>(code - 0x20) : c;
    });
    return text;
}

bool SetName(ObjectNames& names, const CatalogueSection& section, std::int32_t id, std::string name)
{
    if (section.Game == kNoLevel)
        return names.SetStatic(id, std::move(name));
    return names.SetMoveable(section.Game, id, std::move(name));
}

void ReadSection(ByteReader& reader, const CatalogueSection& section, ObjectNames& names)
{
    const auto count = reader.Read<std::int32_t>();
    for (std::int32_t id = 0; id < count; ++id) {
        const auto bytes = reader.TakeTable(reader.Read<std::int32_t>(), 1);
        std::string name(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        if (section.HasValue)
            reader.Skip(4);
        if (section.UpperCase)
            name = Capitals(std::move(name));
        if (!SetName(names, section, id, std::move(name)))
            reader.Fail("an object id of " + std::to_string(id));
    }
}

FileBytes LoadCatalogue(const std::string& path, Reporter& report)
{
    try {
        return FileBytes::Load(path);
    } catch (const FileFailure& failure) {
        report.Stop("LoadObjectIDs -> Can't find TR4Objects.dat", kErrorTitle, failure.what());
    }
}

} // namespace

void LoadObjectIDs(const std::string& path, ObjectNames& names, Reporter& report)
{
    const auto standard = FromPath(report.TheHost().ProgramFolder() / kCatalogueName);
    try {
        const FileBytes file = LoadCatalogue(path.empty() ? standard : path, report);
        ByteReader reader(file.Bytes());
        reader.Section("object names");
        for (const CatalogueSection& section : kSections)
            ReadSection(reader, section, names);
    } catch (const ReadFailure& failure) {
        report.Stop("Error reading TR4Objects.dat", kErrorTitle, failure.what());
    }
}

} // namespace morlik
