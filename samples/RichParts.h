#pragma once

#include "samples/LevelContent.h"
#include "samples/SampleArt.h"

namespace morlik::samples
{

/// Numbers of the object textures of a rich level.
struct RichTextures
{
    std::array<std::int16_t, static_cast<std::size_t>(Art::Count)> Rectangles{};
    std::int16_t MirroredDoor = 0;
    std::int16_t MirroredArrow = 0;
    std::int16_t CrateSideAgain = 0; ///< the same box a second time
    std::int16_t PillarLid = 0;      ///< triangles from here on
    std::int16_t Roof = 0;
    std::int16_t Rock = 0;
    std::int16_t RockMirrored = 0; ///< the same box, the other way round
    std::array<std::int16_t, 8> Sails{};

    std::int16_t Of(Art art) const { return Rectangles.at(static_cast<std::size_t>(art)); }
};

/// Object numbers by game, all of them with a name in the catalogue.
struct ObjectIDs
{
    std::int32_t Medipack;
    std::int32_t Pendulum;
    std::int32_t Crate;
    std::int32_t Switch;
    std::int32_t Door;
    std::int32_t Mill;
    std::int32_t Horizon; ///< -1 where the game has none
    std::int32_t Pistols;
    std::int32_t Target;
};
ObjectIDs ObjectIDsOf(VersionCode game);

/// Sound numbers that the animations name; the sound map has them.
enum RichSound : std::int16_t
{
    kStepSound = 17,
    kSwitchSound = 38,
    kMillSound = 59,
    kDoorOpenSound = 64,
    kDoorCloseSound = 65, ///< the same sound detail as the one before
    kPendulumSound = 70,
    kSilentSound = 80 ///< its detail has no samples
};

/// Lara: fifteen meshes, left and right limbs the same ones, standing and walking.
void AddLara(LevelContent& level, const RichTextures& textures);

/// The other moveables, the last of them without animations.
void AddObjects(LevelContent& level, const RichTextures& textures);

void AddStaticMeshes(LevelContent& level, const RichTextures& textures, bool many);

/// Two rooms with every list, sprites, and the sections that are passed over.
void AddScene(LevelContent& level, const RichTextures& textures);

void AddSounds(LevelContent& level);

} // namespace morlik::samples
