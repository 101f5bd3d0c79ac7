#pragma once

#include "base/Records.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace morlik
{

/// The commands of animations are words, one command after the other: its type, then its operands.
///
///   type  operands
///   1     a shift by x, y and z
///   2     the two speeds of a jump
///   3, 4  none
///   5     a frame, and the number of a sound that it makes; its top bit keeps that
///         to the water, the one below to the land, both together to neither
///   6     a frame, and the number of an effect
constexpr std::int16_t kSoundCommand = 5;
constexpr std::uint16_t kSoundNumberMask = 0x3fff;

/// Words of the command that begins at word `at`, with its type; 0 for a command that is not known
/// or has no room.
std::size_t CommandLength(std::span<const std::int16_t> words, std::size_t at);

/// Commands that are looked at for all objects of a level; damaged animations share theirs again
/// and again.
constexpr std::int64_t kMostCommands = std::int64_t{1} << 22U;

/// Calls `visitSound` with the 16-bit number of each sound that an animation names, up to a command
/// that is damaged or the last of those that are left. Gives how many words its commands have.
template <class VisitSound>
std::size_t WalkCommands(const Animation& animation, std::span<const std::int16_t> words,
                         std::int64_t& commandsLeft, VisitSound visitSound)
{
    if (animation.AnimCommand < 0)
        return 0;
    const auto first = static_cast<std::size_t>(animation.AnimCommand);
    auto at = first;
    for (int i = 0; i < animation.NumAnimCommands && --commandsLeft > 0; ++i) {
        const auto length = CommandLength(words, at);
        if (length == 0)
            break;
        if (words[at] == kSoundCommand)
            visitSound(static_cast<std::uint16_t>(static_cast<std::uint16_t>(words[at + 2]) &
                                                  kSoundNumberMask));
        at += length;
    }
    return at - first;
}

} // namespace morlik
