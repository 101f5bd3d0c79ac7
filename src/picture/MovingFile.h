#pragma once

#include "picture/Picture.h"

#include <cstddef>
#include <memory>
#include <string>

namespace morlik
{

constexpr std::int32_t kPicturesPerSecond = 30;

/// A file of pictures of one size that follow each other 30 times a second, over and over. One
/// picture alone is a still one.
class MovingFile
{
public:
    MovingFile() = default;
    MovingFile(const MovingFile&) = delete;
    MovingFile& operator=(const MovingFile&) = delete;
    virtual ~MovingFile() = default;

    /// The next picture. `FileFailure` where it can't be written.
    virtual void Add(const Picture& picture) = 0;
    /// Puts the file in its place once all pictures are there; without that nothing is left of it.
    /// `FileFailure`.
    virtual void TakePlace() = 0;
};

/// An animated PNG file of `count` pictures. Programs that don't know such files show the first
/// one. A PNG file with more chunks, each with its size, name and CRC:
///
///   acTL, before the first IDAT chunk: number of pictures, of rounds (0: endless)
///   fcTL, before each picture: sequence number, width, height, X, Y, all of 32 bits; delay in
///         seconds as numerator and denominator of 16; dispose and blend of 8
///   fdAT, in place of IDAT from the second picture on: sequence number, data
///
/// All numbers are big-endian; fcTL and fdAT chunks are numbered together, from 0. A picture only
/// holds the rectangle that differs from the one before it. `FileFailure` in a build without PNG.
std::unique_ptr<MovingFile> NewAnimatedPNG(const std::string& path, std::size_t count);

/// Whether this build can write WebP files.
bool HasWebP();
/// The library that does it, and its version; empty without.
std::string WebPLibrary();

/// An animated WebP file of `count` pictures, without loss. Its times are whole milliseconds. The
/// pictures are kept, compressed, until it takes its place. `FileFailure` in a build without WebP.
std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t count);

} // namespace morlik
