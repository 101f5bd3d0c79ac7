#pragma once

#include "samples/MarkedWriter.h"

#include <array>
#include <string>

namespace morlik::samples
{

/// The object types of a project that have a form of their own.
constexpr std::int16_t kPlainObject = 8;
constexpr std::int16_t kLongObject = 0x10; ///< with five more words
constexpr std::array<std::int16_t, 11> kSecondObjectTypes{
    0x4000, 0x4020, 0x4100, 0x4200, 0x5000, 0x6000, 0x4040, 0x4080, 0x4864, 0x4400, 0x4c00};
constexpr std::int16_t kLaterSecondObject = 0x4800; ///< only in the projects of later editors

/// A room slot of a project. The slot word 1 marks an empty one, of which nothing else is written.
struct ProjectRoom
{
    std::int16_t SlotWord = 0;
    std::string Name{}; ///< at most 80 characters
    std::int16_t BlockColumns = 2;
    std::int16_t BlockRows = 2;
    std::size_t NumItems = 0;
    std::vector<std::int16_t> Objects{};       ///< their types
    std::vector<std::int16_t> SecondObjects{}; ///< their types; an unknown one gets no body
};

struct ProjectContent
{
    std::string Magic = "PROJFILE";
    std::int32_t Version = 1;
    bool Later = false; ///< the form of later editors: larger objects, smaller blocks
    std::vector<ProjectRoom> Rooms{};
    std::string TextureFile{}; ///< without a blank, which ends it
    std::size_t NumTrailRecords = 0;
};

/// Four slots, the second of them empty; objects of every type, items, blocks.
ProjectContent MakeProject();

LevelFile WriteProject(const ProjectContent& project);

} // namespace morlik::samples
