#pragma once

#include "base/Bytes.h"
#include "base/Reporter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace morlik
{

/// A project of the level editor, as far as the program shows it. Numbers are little-endian,
/// nothing is padded; what has no name here is passed over.
///
///   "PROJFILE", version (32-bit), number of room slots (32-bit)
///   the slots
///   2 x 32-bit, a table of 2000 x 32-bit, 32-bit, 768 x 32-bit, 32-bit, 512 x 32-bit
///   a file name that ends before the first blank
///   number of trail records (16-bit), records of 8 bytes
///
/// A slot is a word, 1 for an empty one; after any other word follow
///
///   name, 80 characters
///   3 x 32-bit, 5 x 16-bit, columns and rows of blocks (16-bit each), 3 x 16-bit
///   items: count (16-bit), that many words, records of 42 bytes
///   objects: count, words, objects of 34 bytes (type word first), 44 for type 0x10;
///     in the projects of later editors 42 and 52
///   32-bit
///   second objects: count, words, objects of a type word and a body by its type
///   2 x 16-bit, 3 bytes, 16-bit
///   the blocks, 148 bytes each, 140 in the projects of later editors
///
/// A count of 0 or less stands for an empty list.

/// A room of a project, or an empty slot.
struct PRJRoom
{
    std::int16_t State = 0; ///< -1 for a room, 0 for an empty slot
    std::int16_t Index = 0; ///< number of the room among those that aren't empty, from 0
    std::string Name;       ///< its 80 characters as they stand, padding included
    std::int16_t BlockColumns = 0;
    std::int16_t BlockRows = 0;
    std::vector<std::int16_t> ObjectTypes;  ///< of all objects, in file order
    std::vector<std::int16_t> Object2Types; ///< of all second objects
};

/// A loaded project; all empty where the file was no good.
struct PRJData
{
    std::string Signature;
    std::int32_t Version = 0;
    std::int32_t NumRoomSlots = 0;
    std::int32_t NumRooms = 0;  ///< slots that aren't empty
    std::vector<PRJRoom> Rooms; ///< one for each slot
    std::string TextureFile;
    std::int16_t NumTrailRecords = 0;
};

/// Reads a project. From its signature on no level is loaded any more, and `levelIsLoaded` becomes
/// 0. Objects of an unknown type get a message each and the read goes on. A file that can't be
/// opened, is no project or is damaged gets its message, and the result is empty. Damaged means
/// that it ends early, has fewer than 1 or more than 32767 slots, a negative number of blocks or
/// more than 20 objects of unknown types.
PRJData ReadPRJ(const std::string& fileName, std::int16_t& levelIsLoaded, Reporter& report);

/// The characters up to the first blank, which is read too.
std::string ReadPRJString(ByteReader& reader);

} // namespace morlik
