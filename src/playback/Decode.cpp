#include "playback/Decode.h"

#include "base/Bytes.h"
#include "base/Narrow.h"

#include <SDL_audio.h>
#include <SDL_error.h>
#include <SDL_rwops.h>
#include <algorithm>
#include <memory>
#include <string_view>

namespace morlik
{

namespace
{

std::int16_t FromUnsigned(std::uint8_t value)
{
    constexpr int kMiddle = 0x80;
    return static_cast<std::int16_t>((value - kMiddle) * 256);
}

/// The file of a sound with nothing but its two chunks, as long as they are: the library takes as
/// much memory as a chunk says that it needs.
ByteWriter PlainFile(const WaveInfo& info)
{
    ByteWriter file;
    const auto put = [&file](std::string_view name, std::span<const std::byte> chunk) {
        file.PutBytes(std::as_bytes(std::span(name)));
        file.Put(narrow<std::uint32_t>(chunk.size()));
        file.PutBytes(chunk);
        file.PutZeros(chunk.size() % 2);
    };
    put("RIFF", {}); // whose size the library doesn't look at
    file.PutBytes(std::as_bytes(std::span(std::string_view("WAVE"))));
    put("fmt ", info.Format);
    put("data", info.Data);
    return file;
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
    const ByteWriter plain = PlainFile(info);
    SDL_RWops* source = SDL_RWFromConstMem(plain.Bytes().data(), narrow<int>(plain.Size()));
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
