#pragma once

#include "picture/Picture.h"

#include <cstddef>
#include <memory>
#include <string>

namespace morlik
{

constexpr std::int32_t kPicturesPerSecond = 30;

/// What the pictures of a file may take, each by what changes: pixels, and bytes once they are
/// compressed. Damaged objects may flicker all over, or show noise.
constexpr std::size_t kMostMovingPixels = std::size_t{1} << 26U;
constexpr std::size_t kMostMovingBytes = std::size_t{64} << 20U;

/// A part of a picture, in pixels.
struct PictureArea
{
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
};

/// A file of pictures of one size that follow each other, 30 times a second or at another rate,
/// over and over. One picture alone is a still one.
class MovingFile
{
public:
    MovingFile() = default;
    MovingFile(const MovingFile&) = delete;
    MovingFile& operator=(const MovingFile&) = delete;
    virtual ~MovingFile() = default;

    /// The next picture. `FileFailure` where it can't be written; `ReadFailure` where all together
    /// take more than `kMostMovingPixels` or `kMostMovingBytes`.
    virtual void Add(const Picture& picture) = 0;
    /// Puts the file in its place once all pictures are there; without that nothing is left of it.
    /// `FileFailure`.
    virtual void TakePlace() = 0;

protected:
    /// Tells what is to be written of the next picture, and keeps that picture.
    PictureArea TakeChange(const Picture& picture);
    void TakeBytes(std::size_t bytes);
    const Picture& Last() const { return last_; }

private:
    Picture last_;
    std::size_t pixelsLeft_ = kMostMovingPixels;
    std::size_t bytesLeft_ = kMostMovingBytes;
};

/// An animated PNG file of `count` pictures. Programs that don't know such files show the first
/// one. Behind the signature stand chunks, each with the size of its data, its name, the data and
/// the CRC of name and data:
///
///   IHDR  width, height, of 32 bits; depth, colour type and three methods of 8
///   acTL, before the first IDAT chunk: number of pictures, of rounds (0: endless)
///   fcTL, before each picture: sequence number, width, height, X, Y, all of 32 bits; delay in
///         seconds as numerator and denominator of 16; dispose and blend of 8
///   IDAT  the first picture: a zlib stream of its rows, each behind a byte for its filter
///   fdAT  each further picture: sequence number, and the same
///   IEND  nothing
///
/// All numbers are big-endian; fcTL and fdAT chunks are numbered together, from 0. A picture only
/// holds the rectangle that differs from the one before it. `FileFailure` in a build without PNG.
std::unique_ptr<MovingFile> NewAnimatedPNG(const std::string& path, std::size_t count);

/// Whether this build can write WebP files.
bool HasWebP();
/// The library that does it, and its version; empty without.
std::string WebPLibrary();

/// How an animated WebP file is written.
struct WebPForm
{
    std::int32_t Rate = kPicturesPerSecond;
    bool IsLossy = false; ///< a quarter as large, and close enough to look at
};

/// An animated WebP file of `count` pictures. Its times are whole milliseconds. The pictures are
/// kept, compressed, until it takes its place. `FileFailure` in a build without WebP.
std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t count,
                                            const WebPForm& form = {});

} // namespace morlik
