#include "model/Pose.h"

#include "model/Damage.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::size_t kBoxWords = 6;
constexpr std::size_t kHeaderWords = kBoxWords + 3;
constexpr unsigned kAxisShift = 14;
constexpr std::uint32_t kFineAngle = 0xfff; ///< of one axis, 4096 to a full turn
constexpr std::uint32_t kWideAngle = 0x3ff; ///< of three, 1024 to a full turn
constexpr std::uint32_t kFineSteps = 4;     ///< fine angles in a wide one
constexpr unsigned kXShift = 20;
constexpr unsigned kYShift = 10;

std::int16_t Widened(std::uint32_t pair, unsigned shift)
{
    return static_cast<std::int16_t>(((pair >> shift) & kWideAngle) * kFineSteps);
}

/// Takes words from a frame.
class FrameWords
{
public:
    explicit FrameWords(std::span<const std::int16_t> words) : words_(words) {}

    std::uint16_t Next()
    {
        if (at_ == words_.size())
            FailDamaged("a frame of ", words_.size(), " words is too short for its rotations");
        return static_cast<std::uint16_t>(words_[at_++]);
    }
    std::int16_t NextSigned() { return static_cast<std::int16_t>(Next()); }
    std::size_t Taken() const { return at_; }

private:
    std::span<const std::int16_t> words_;
    std::size_t at_ = 0;
};

Rotation ReadRotation(FrameWords& words)
{
    const std::uint32_t word = words.Next();
    const auto angle = static_cast<std::int16_t>(word & kFineAngle);
    switch (word >> kAxisShift) {
    case 1:
        return {.X = angle};
    case 2:
        return {.Y = angle};
    case 3:
        return {.Z = angle};
    default:
        break;
    }
    const std::uint32_t pair = (word << 16U) | words.Next();
    return {.X = Widened(pair, kXShift), .Y = Widened(pair, kYShift), .Z = Widened(pair, 0)};
}

} // namespace

Pose ReadPose(std::span<const std::int16_t> frame, std::size_t numMeshes)
{
    // Each rotation is a word at least, so that a count is compared before it is allocated.
    if (frame.size() < kHeaderWords || numMeshes > frame.size() - kHeaderWords)
        FailDamaged("a frame of ", frame.size(), " words is too short for ", numMeshes,
                    " rotations");
    FrameWords words(frame);
    Pose pose;
    std::generate(pose.Box.begin(), pose.Box.end(), [&] { return words.NextSigned(); });
    for (std::int16_t* field : {&pose.Offset.X, &pose.Offset.Y, &pose.Offset.Z})
        *field = words.NextSigned();
    pose.Rotations.resize(numMeshes);
    std::generate(pose.Rotations.begin(), pose.Rotations.end(),
                  [&] { return ReadRotation(words); });
    pose.NumWords = words.Taken();
    return pose;
}

Pose RestPose(std::size_t numMeshes)
{
    Pose pose;
    pose.Rotations.resize(numMeshes);
    return pose;
}

} // namespace morlik
