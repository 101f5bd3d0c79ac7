#pragma once

#include "audio/AnimationSounds.h"
#include "playback/Player.h"

#include <random>

namespace morlik
{

/// Plays the sounds of an animation while its frames pass, through a device of its own. Those that
/// are heard in the water alone are left out where the animation has others for the land.
class AnimationPlayer
{
public:
    /// Takes the sounds of another animation and ends those that play. Samples that can't be played
    /// are passed over, and all beyond 16 MiB.
    void Take(const std::vector<SoundAt>& sounds);

    /// Begins the sounds of the frames behind number `before`, up to `now`. Gives whether there is
    /// a device; else `Error` tells why not.
    bool Pass(int before, int now);

    void Stop() { player_->Stop(); }
    const std::string& Error() const { return player_->Error(); }

private:
    struct Sound
    {
        int Frame = 0;
        std::vector<DecodedWave> Waves; ///< of which it takes one by chance
    };

    std::unique_ptr<Player> player_ = MakePlayer();
    std::vector<Sound> sounds_;
    std::minstd_rand random_{std::random_device()()};
};

} // namespace morlik
