#include "cli/Describe.h"

#include "audio/WaveInfo.h"
#include "base/Text.h"
#include "cli/MainSFX.h"
#include "convert/ConvertMeshes.h"
#include "convert/ObjectNeeds.h"
#include "convert/UsedTextures.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Sounds.h"

#include <cmath>
#include <optional>

namespace morlik::cli
{

namespace
{

/// Textures that an object set of the level takes; null where its meshes can't be converted.
Json CountUsedTextures(const Session& session, Reporter& report)
{
    try {
        const auto textures = NumberTextures(session.Level, FirstTextureOf(session.Level), report);
        if (!textures)
            return nullptr;
        std::vector<std::string> info;
        ConvertMeshes(session.Level, *textures, false, info, report);
        return textures->InOrder.size();
    } catch (const ProgramEnd&) {
        return nullptr;
    }
}

/// The textures of all objects; none where a mesh is damaged.
std::optional<ObjectNeeds> TexturesOf(const LevelData& level)
{
    try {
        return NeedsOf(level);
    } catch (const ReadFailure&) {
        return std::nullopt;
    }
}

Json Moveables(const Session& session, const std::optional<ObjectNeeds>& textures)
{
    Json list = Json::array();
    const LevelData& level = session.Level;
    const auto animations = AnimationNeedsOf(level);
    for (std::size_t i = 0; i < level.Moveables.size(); ++i) {
        const Moveable& moveable = level.Moveables[i];
        list.push_back(
            {{"id", moveable.ObjectID},
             {"name", FromLatin1(session.Names.Moveable(level.Version, moveable.ObjectID))},
             {"meshes", moveable.NumMeshes},
             {"animations", animations[i].Animations},
             {"frames", animations[i].Frames},
             {"textures", textures ? Json(textures->Moveables[i].size()) : Json()},
             {"sounds", animations[i].Sounds}});
    }
    return list;
}

Json Statics(const Session& session, const std::optional<ObjectNeeds>& textures)
{
    Json list = Json::array();
    const auto& meshes = session.Level.StaticMeshes;
    for (std::size_t i = 0; i < meshes.size(); ++i)
        list.push_back({{"id", meshes[i].ObjectID},
                        {"name", FromLatin1(session.Names.Static(meshes[i].ObjectID))},
                        {"textures", textures ? Json(textures->StaticMeshes[i].size()) : Json()}});
    return list;
}

/// Adds what a WAV file tells of its sound; null where it is none that can be played.
Json WithSound(Json entry, std::span<const std::byte> wave)
{
    entry["bytes"] = wave.size();
    std::optional<WaveInfo> info;
    try {
        info = ReadWaveInfo(wave);
    } catch (const ReadFailure&) {
        // its numbers are unknown
    }
    const auto known = [&info](auto value) { return info ? Json(value(*info)) : Json(); };
    entry["coding"] =
        known([](const WaveInfo& of) { return of.Coding == WaveCoding::ADPCM ? "ADPCM" : "PCM"; });
    entry["rate"] = known([](const WaveInfo& of) { return of.Rate; });
    entry["bits"] = known([](const WaveInfo& of) { return of.Bits; });
    entry["channels"] = known([](const WaveInfo& of) { return of.Channels; });
    constexpr double kParts = 1000; // of a second
    entry["seconds"] =
        known([](const WaveInfo& of) { return std::round(of.Seconds() * kParts) / kParts; });
    return entry;
}

Json Sounds(const LevelData& level)
{
    Json list = Json::array();
    for (const SoundEntry& entry : LevelSounds(level)) {
        const Sample* sample = FindIn(level.Samples, entry.Sample);
        list.push_back(WithSound({{"name", entry.Name}},
                                 sample != nullptr ? sample->Data : std::span<const std::byte>()));
    }
    return list;
}

Json DescribeLevel(const std::string& file, Session& session)
{
    LoadObjectIDs("", session.Names, session.Report);
    LoadLevel(session, file);
    const LevelData& level = session.Level;
    const bool samplesElsewhere = HasMainSFX(level);
    const std::size_t numElsewhere =
        HasMainSFX(level.Version) ? level.SampleIndices.size() : level.SamplePlaces.size();
    const auto textures = TexturesOf(level);
    return {{"game", NumberOf(level.Version)},
            {"rooms", session.State.RoomCount},
            {"tiles", level.TileBytes / kTileBytes},
            {"textures", level.NumTextInfo},
            {"textures_used", CountUsedTextures(session, session.Report)},
            {"most_textures", kMostTextures},
            {"meshes", level.NumMeshPointers},
            {"animations", level.NumAnimations},
            // The reader of IV and V passes over them.
            {"sprites", IsOlderGame(level.Version) ? Json(level.NumSpriteTextures) : Json()},
            {"sound_details", level.NumSoundDetails},
            {"samples", samplesElsewhere ? Json(numElsewhere) : Json(level.NumSamples)},
            {"moveables", Moveables(session, textures)},
            {"static_meshes", Statics(session, textures)},
            {"sounds", samplesElsewhere ? Json::array() : Sounds(level)}};
}

Json DescribeMainSFX(const std::string& file, Session& session)
{
    if (!LoadMainSFX(session, file))
        throw ProgramEnd("no main.sfx");
    Json list = Json::array();
    for (std::size_t i = 0; i < session.MainSFX.MainSFXSamples.size(); ++i)
        list.push_back(WithSound({{"number", i}}, session.MainSFX.MainSFXSamples[i]));
    return {{"samples", std::move(list)}};
}

Json DescribeProject(const std::string& file, Session& session)
{
    const PRJData project = ReadPRJ(file, session.State.LevelIsLoaded, session.Report);
    if (project.Rooms.empty())
        throw ProgramEnd("no project");
    Json rooms = Json::array();
    for (const PRJRoom& room : project.Rooms)
        if (room.State != 0)
            rooms.push_back({{"number", room.Index},
                             {"name", FromLatin1(room.Name)},
                             {"columns", room.BlockColumns},
                             {"rows", room.BlockRows},
                             {"objects", room.ObjectTypes.size() + room.Object2Types.size()}});
    return {{"version", project.Version},
            {"room_slots", project.NumRoomSlots},
            {"texture_file", FromLatin1(project.TextureFile)},
            {"rooms", std::move(rooms)}};
}

} // namespace

Json Describe(const std::string& file, Session& session)
{
    if (MayBeMainSFX(file))
        return DescribeMainSFX(file, session);
    return EndsWithNoCase(file, ".prj") ? DescribeProject(file, session)
                                        : DescribeLevel(file, session);
}

} // namespace morlik::cli
