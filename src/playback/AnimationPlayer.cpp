#include "playback/AnimationPlayer.h"

#include "base/Bytes.h"
#include "playback/Decode.h"

#include <algorithm>

namespace morlik
{

namespace
{

std::optional<DecodedWave> TryToDecode(std::span<const std::byte> file)
{
    try {
        return Decode(file);
    } catch (const ReadFailure&) {
        return std::nullopt; // the list of sounds tells why
    }
}

} // namespace

void AnimationPlayer::Take(const std::vector<SoundAt>& sounds)
{
    Stop();
    sounds_.clear();
    const bool hasLand =
        std::ranges::find(sounds, SoundPlace::OnLand, &SoundAt::Place) != sounds.end();
    std::size_t left = kMostPlayedBytes;
    for (const SoundAt& sound : sounds) {
        if (hasLand && sound.Place == SoundPlace::InWater)
            continue;
        Sound taken{sound.Frame, {}};
        for (const auto file : sound.Samples) {
            if (file.size() > left)
                return;
            left -= file.size();
            if (auto wave = TryToDecode(file))
                taken.Waves.push_back(std::move(*wave));
        }
        if (!taken.Waves.empty())
            sounds_.push_back(std::move(taken));
    }
}

bool AnimationPlayer::Pass(int before, int now)
{
    for (const Sound& sound : sounds_)
        if (sound.Frame > before && sound.Frame <= now &&
            !player_->PlayBeside(sound.Waves[random_() % sound.Waves.size()]))
            return false;
    return true;
}

} // namespace morlik
