#include "playback/Player.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <span>
#include <vector>

#define SDL_MAIN_HANDLED // the programs have mains of their own
#include <SDL.h>

namespace morlik
{

namespace
{

/// More at a time are noise, and take memory: an animation that runs fast could gather them.
constexpr std::size_t kMostVoices = 32;
constexpr std::size_t kMostValues = std::size_t{1} << 25U;
/// Of a second that the device asks for at once: the time from a stop to silence.
constexpr int kPartOfSecond = 64;

struct Voice
{
    std::vector<std::int16_t> Values; ///< in the rate and channels of the device
    bool IsSingle = false;            ///< begun by `Play`
    std::size_t Next = 0;

    std::span<const std::int16_t> Left() const { return std::span(Values).subspan(Next); }
};

void AddTo(std::span<std::int16_t> sum, Voice& voice)
{
    using Limits = std::numeric_limits<std::int16_t>;
    const auto left = voice.Left();
    const std::size_t count = std::min(sum.size(), left.size());
    for (std::size_t i = 0; i < count; ++i)
        sum[i] = static_cast<std::int16_t>(
            std::clamp<int>(sum[i] + left[i], Limits::min(), Limits::max()));
    voice.Next += count;
}

/// The values of a wave at another rate or number of channels; empty where they are more than may
/// play at a time, or memory is short.
std::vector<std::int16_t> Convert(const DecodedWave& wave, const SDL_AudioSpec& to)
{
    if (wave.Seconds() * to.freq * to.channels > double{kMostValues})
        return {};
    const std::unique_ptr<SDL_AudioStream, decltype(&SDL_FreeAudioStream)> stream(
        SDL_NewAudioStream(AUDIO_S16SYS, static_cast<Uint8>(wave.Channels), wave.Rate, to.format,
                           to.channels, to.freq),
        SDL_FreeAudioStream);
    const auto bytes = std::as_bytes(std::span(wave.Values));
    if (!stream ||
        SDL_AudioStreamPut(stream.get(), bytes.data(), static_cast<int>(bytes.size())) != 0 ||
        SDL_AudioStreamFlush(stream.get()) != 0)
        return {};
    std::vector<std::int16_t> values(
        static_cast<std::size_t>(SDL_AudioStreamAvailable(stream.get())) / sizeof(std::int16_t));
    SDL_AudioStreamGet(stream.get(), values.data(),
                       static_cast<int>(values.size() * sizeof(std::int16_t)));
    return values;
}

/// Opens the device in the form of the first sound, which so needs no conversion of ours; sounds
/// that come beside it in another form are converted.
class SdlPlayer : public Player
{
public:
    ~SdlPlayer() override
    {
        Close();
        if (isReady_)
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }

    bool Play(const DecodedWave& wave) override
    {
        Stop();
        return Begin(wave, true);
    }

    bool PlayBeside(const DecodedWave& wave) override { return Begin(wave, false); }

    void Stop() override
    {
        if (device_ == 0)
            return;
        const Lock lock(device_);
        voices_.clear();
        SDL_PauseAudioDevice(device_, 1);
    }

    std::optional<double> Place() const override
    {
        if (device_ == 0)
            return std::nullopt;
        const Lock lock(device_);
        const auto single = std::ranges::find_if(voices_, &Voice::IsSingle);
        if (single == voices_.end())
            return std::nullopt;
        return static_cast<double>(single->Next) / spec_.channels / spec_.freq;
    }

    const std::string& Error() const override { return error_; }

private:
    /// Holds off the thread of the device, which fetches from the voices.
    class Lock
    {
    public:
        explicit Lock(SDL_AudioDeviceID device) : device_(device) { SDL_LockAudioDevice(device_); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
        ~Lock() { SDL_UnlockAudioDevice(device_); }

    private:
        SDL_AudioDeviceID device_;
    };

    static void Fill(void* player, Uint8* stream, int bytes)
    {
        const std::span out(static_cast<std::int16_t*>(static_cast<void*>(stream)),
                            static_cast<std::size_t>(bytes) / sizeof(std::int16_t));
        std::ranges::fill(out, std::int16_t{0});
        auto& voices = static_cast<SdlPlayer*>(player)->voices_;
        for (Voice& voice : voices)
            AddTo(out, voice);
        std::erase_if(voices, [](const Voice& voice) { return voice.Left().empty(); });
    }

    bool Begin(const DecodedWave& wave, bool isSingle)
    {
        error_.clear();
        if (!Open(wave)) {
            error_ = SDL_GetError();
            return false;
        }
        const bool fits = wave.Rate == spec_.freq && wave.Channels == spec_.channels;
        Voice voice{fits ? wave.Values : Convert(wave, spec_), isSingle};
        const Lock lock(device_);
        MakeRoom(voice.Values.size());
        voices_.push_back(std::move(voice));
        SDL_PauseAudioDevice(device_, 0);
        return true;
    }

    /// Whether there is a device; in the form of `wave`, unless it plays something.
    bool Open(const DecodedWave& wave)
    {
        const bool fits = wave.Rate == spec_.freq && wave.Channels == spec_.channels;
        if (device_ != 0 && (fits || IsPlaying()))
            return true;
        Close();
        if (!isReady_) {
            SDL_SetMainReady();
            SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // a signal ends the program as before
            isReady_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
        }
        if (!isReady_)
            return false;
        SDL_AudioSpec wanted{};
        wanted.freq = wave.Rate;
        wanted.format = AUDIO_S16SYS;
        wanted.channels = static_cast<Uint8>(wave.Channels);
        wanted.samples =
            static_cast<Uint16>(std::bit_ceil(static_cast<unsigned>(wave.Rate / kPartOfSecond)));
        wanted.callback = Fill;
        wanted.userdata = this;
        device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &spec_, 0);
        return device_ != 0;
    }

    /// Ends the oldest voices where a further one is too much.
    void MakeRoom(std::size_t values)
    {
        for (const Voice& voice : voices_)
            values += voice.Values.size();
        while (!voices_.empty() && (voices_.size() == kMostVoices || values > kMostValues)) {
            values -= voices_.front().Values.size();
            voices_.erase(voices_.begin());
        }
    }

    bool IsPlaying() const
    {
        const Lock lock(device_);
        return !voices_.empty();
    }

    void Close()
    {
        if (device_ != 0)
            SDL_CloseAudioDevice(device_);
        device_ = 0;
        voices_.clear();
    }

    bool isReady_ = false;
    SDL_AudioDeviceID device_ = 0;
    SDL_AudioSpec spec_{}; ///< of the open device
    std::vector<Voice> voices_;
    std::string error_;
};

} // namespace

std::unique_ptr<Player> MakePlayer()
{
    return std::make_unique<SdlPlayer>();
}

std::string PlayerLibrary()
{
    SDL_version version{};
    SDL_GetVersion(&version);
    return "SDL " + std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
           std::to_string(version.patch);
}

} // namespace morlik
