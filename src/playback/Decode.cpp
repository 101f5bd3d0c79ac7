#include "playback/Decode.h"

#include "base/Bytes.h"
#include "base/Narrow.h"

#include <SDL_audio.h>
#include <SDL_error.h>
#include <SDL_rwops.h>
#include <algorithm>
#include <memory>

namespace morlik
{

namespace
{

std::int16_t FromUnsigned(std::uint8_t value)
{
    constexpr int kMiddle = 0x80;
    return static_cast<std::int16_t>((value - kMiddle) * 256);
}

} // namespace

DecodedWave Decode(std::span<const std::byte> file)
{
    if (file.size() > kMostPlayedBytes)
        throw ReadFailure("a WAV file of " + std::to_string(file.size()) +
                          " bytes is not played, at most " + std::to_string(kMostPlayedBytes));
    const WaveInfo info = ReadWaveInfo(file); // leaves no more than what the library does well
    SDL_AudioSpec layout{};
    Uint8* loaded = nullptr;
    Uint32 size = 0;
    SDL_RWops* source = SDL_RWFromConstMem(file.data(), narrow<int>(file.size()));
    if (SDL_LoadWAV_RW(source, 1, &layout, &loaded, &size) == nullptr)
        throw ReadFailure(std::string("sound of a WAV file: ") + SDL_GetError());
    const std::unique_ptr<Uint8, decltype(&SDL_FreeWAV)> owner(loaded, SDL_FreeWAV);
    DecodedWave wave{layout.freq, info.Channels, {}};
    if (layout.format == AUDIO_U8) {
        wave.Values.resize(size);
        std::transform(loaded, loaded + size, wave.Values.begin(), FromUnsigned);
    } else {
        wave.Values.resize(size / sizeof(std::int16_t));
        std::memcpy(wave.Values.data(), loaded, wave.Values.size() * sizeof(std::int16_t));
    }
    if (wave.Frames() == 0)
        throw ReadFailure("sound of a WAV file: there is none");
    return wave;
}

} // namespace morlik
