#pragma once

#include "level/LevelData.h"
#include "platform/ConsoleHost.h"
#include "samples/LevelContent.h"
#include "set/ObjectSet.h"
#include "shell/Session.h"

#include <cstdint>
#include <functional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

namespace morlik::fuzz
{

using Bytes = std::vector<std::uint8_t>;

/// What a fuzzer of levels is fed with: a byte that chooses the ending of the file's name, then the
/// file. The tiles of the older games, 64 KiB and more of no interest, are left out of a file with
/// up to four of them, and come back as zeros before it is read.
constexpr std::size_t kNameBytes = 1;

/// The input that stands for a level.
Bytes InputOf(const samples::LevelContent& level);

/// Where the tile count stands in a file of an older game.
std::size_t TileCountAt(VersionCode game);

/// The game that an input is read as: by its first word, and its name byte where games share one.
VersionCode GameOf(std::span<const std::uint8_t> input);

/// A run of the program that works in memory and keeps its messages to itself.
class Run
{
public:
    Run();

    /// Writes the level file of an input and gives its path.
    std::string WriteLevel(std::span<const std::uint8_t> input) const;
    /// Writes a file of that name.
    std::string Write(const std::string& name, std::span<const std::uint8_t> bytes) const;
    std::string File(const std::string& name) const { return folder_ + "/" + name; }

    /// Does the work; a message that ends the program is as good as a result.
    template <class Work>
    static void Try(Work work)
    {
        try {
            work();
        } catch (const ProgramEnd&) {
            return;
        }
    }

    /// Gives the object set of an input's level to a work, if there is one.
    void TryOnSet(std::span<const std::uint8_t> input,
                  const std::function<void(const ObjectSet&)>& work);

private:
    std::string folder_;
    std::ostringstream messages_;

public:
    ConsoleHost Console;
    Session Program{Console};
};

} // namespace morlik::fuzz
