#pragma once

#include "audio/WaveInfo.h"

#include <memory>
#include <optional>
#include <string>

namespace morlik
{

/// The way to the loudspeaker. What plays goes on by itself. Not for several threads.
class Player
{
public:
    Player() = default;
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    virtual ~Player() = default;

    /// Ends all that plays and begins `wave`. Gives whether there is a device; else `Error` tells
    /// why not.
    virtual bool Play(const DecodedWave& wave) = 0;
    /// The same, but what plays goes on beside it.
    virtual bool PlayBeside(const DecodedWave& wave) = 0;
    /// Ends all, and lets the device rest.
    virtual void Stop() = 0;
    /// How far the wave of the last `Play` is, in seconds; nothing once it is over.
    virtual std::optional<double> Place() const = 0;
    /// In the words of the system; empty after a success.
    virtual const std::string& Error() const = 0;
};

/// The device is looked for, and opened, when something is to be played; where it can't be opened,
/// each time anew.
std::unique_ptr<Player> MakePlayer();

/// The library that plays, and its version.
std::string PlayerLibrary();

} // namespace morlik
