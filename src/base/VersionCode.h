#pragma once

#include <cstdint>
#include <string>

namespace morlik
{

/// The one switch between games, as `LevelVersion` and `LevelData::Version` hold it.
enum class VersionCode : std::int16_t
{
    kNoLevel = 0,
    kTR1 = 1,
    kTR2 = 2,
    kTR3 = 3,
    kTR4 = 4,
    kTR5 = 5,
    kMainSFXVersion = 12, ///< no level: a `main.sfx` is loaded
    kTR1Gold = 15,        ///< becomes 1 right after the load
    kTR5Demo = 51,        ///< a file named "...del.trc", only while it is read
};
using enum VersionCode;

/// The code as it stands in texts: the number of the game.
constexpr std::int32_t NumberOf(VersionCode version)
{
    return static_cast<std::int32_t>(version);
}

inline std::string DigitsOf(VersionCode version)
{
    return std::to_string(NumberOf(version));
}

/// The game of that number; `kNoLevel` where there is none.
constexpr VersionCode GameOf(std::int32_t number)
{
    return number >= 1 && number <= 5 ? static_cast<VersionCode>(number) : kNoLevel;
}

/// Whether the game is one of the older ones, Tomb Raider I to III: palettes, coloured faces,
/// sprites and sound tables of their own.
constexpr bool IsOlderGame(VersionCode version)
{
    switch (version) {
    case kTR1:
    case kTR1Gold:
    case kTR2:
    case kTR3:
        return true;
    case kNoLevel:
    case kTR4:
    case kTR5:
    case kMainSFXVersion:
    case kTR5Demo:
        break;
    }
    return false;
}

/// Whether the samples of the game's levels stand in its `main.sfx`.
constexpr bool HasMainSFX(VersionCode version)
{
    return version == kTR2 || version == kTR3;
}

} // namespace morlik
