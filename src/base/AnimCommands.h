#pragma once

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

} // namespace morlik
