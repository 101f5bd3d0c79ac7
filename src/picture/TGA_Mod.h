#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"

#include <string>
#include <vector>

namespace morlik
{

/// The texture sheet of a level: an uncompressed 24-bit TGA picture, 256 pixels wide, tiles one
/// above the other. A header of 18 bytes, then rows of 256 pixels of 3 bytes, B, G, R, from the
/// bottom of the picture to its top:
///
///   the room tiles
///   the bump tiles of Tomb Raider IV and V, half a tile (128 rows) each, above the room tiles
///
/// In both parts the level's first row is the topmost. The object tiles are left out.

/// Tiles that belong to rooms: `NumRoomTiles` of a level whose file tells it, and for Tomb Raider I
/// to III the highest tile that a face of a room uses and those below it.
std::int16_t CountRoomTiles(const LevelData& level);

/// Whether the sheet of a level fits in a file; if not, after a message.
bool SheetFits(const LevelData& level, Reporter& report);

/// The rows of the sheet as they stand in the file. Progress goes to the window's caption.
std::vector<std::byte> SheetRows(const LevelData& level, Host& host);

/// Writes the texture sheet of a level. Tiles that the level lacks are magenta. Progress goes to
/// the window's caption, which is put back at the end. Gives whether the file is complete; if not,
/// the user has got the message.
bool SaveTGA(const std::string& fileName, const LevelData& level, Reporter& report);

} // namespace morlik
