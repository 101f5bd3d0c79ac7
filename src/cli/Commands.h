#pragma once

#include "gltf/SaveGltf.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace morlik::cli
{

/// Exit statuses.
constexpr int kGood = 0;
constexpr int kFailed = 1;    ///< of several files, one is enough
constexpr int kWrongUse = 2;  ///< nothing was done
constexpr int kStopped = 130; ///< by the user

/// Where results and complaints go.
struct Streams
{
    std::ostream& Out;
    std::ostream& Errors;
    bool IsTerminal = false;  ///< `Errors` is a terminal, which can show a moving bar
    std::size_t Columns = 80; ///< of that terminal
};

/// What commands that take many files have in common.
struct ManyOptions
{
    std::vector<std::string> Files;
    bool Recursive = false; ///< take the files below those that are folders
    bool Json = false;
    bool JsonLines = false; ///< as JSON, each file in its line as soon as it is done
    bool IsQuiet = false;   ///< nothing about what is good
    unsigned int Jobs = 0;  ///< files at a time; 0 for one a processor
    const char* Kind = "files";
    const char* ListName = "files"; ///< of the list in JSON
};

/// The levels are its files.
struct ConvertOptions : ManyOptions
{
    std::string Output;  ///< name of the set of a single level
    std::string Folder;  ///< else where the sets go, each named after its level
    std::string MainSFX; ///< "auto": look for it around each level; empty: none
    std::string Log;     ///< of a single level
    std::string Objects; ///< list of the objects to take; empty: all
    std::string Without; ///< list of those to leave out
    bool AllSounds = false;
    bool Fit = false; ///< leave out objects until the textures are few enough for the editor
    bool UpdateHorizon = false;
    bool ExportSprites = false;
    bool Timings = false;
    bool SkipExisting = false; ///< leave out levels whose set is there
};

/// Converts levels to object sets, each in a session of its own.
int Convert(const ConvertOptions& options, const Streams& streams);

/// Tells what is in levels, `main.sfx` files and projects, as text or as JSON.
int Info(const ManyOptions& options, const Streams& streams);

/// Writes the texture sheet of a level as TGA or PNG, by the ending of `output`.
int SaveSheet(const std::string& level, const std::string& output, const Streams& streams);

/// Writes all sounds of a level or a `main.sfx` into a folder.
int SaveSounds(const std::string& file, const std::string& folder, const Streams& streams);

/// Reads object sets back and tells what is wrong with them. `game` is 1 to 5, or 0 to take it from
/// the list.
int Check(const ManyOptions& options, int game, const Streams& streams);

/// Its words are patterns of objects, then levels, sets and folders.
struct FindOptions : ManyOptions
{
    std::optional<std::int32_t> Sound; ///< slot of the sound map
    std::string SameAs;                ///< LEVEL:OBJECT, whose meshes are looked for
};

/// Tells which levels and sets have objects. Gives `kFailed` where there are none.
int Find(const FindOptions& options, const Streams& streams);

/// Its files are levels.
struct GalleryCommand : ManyOptions
{
    std::string Folder;
    std::string MainSFX = "auto"; ///< as in `ConvertOptions`
    std::size_t Animations = 2;   ///< of each object that get a moving picture
    bool WithoutModels = false;
    bool HasSets = false;
};

/// Makes a folder of pages that show all objects of levels.
int MakeGallery(const GalleryCommand& command, const Streams& streams);

struct PictureOptions
{
    std::string File;   ///< a level or the list of a set
    std::string Output; ///< OUT.png, or OUT.webp for an animation
    std::string Object; ///< id or name
    bool IsStatic = false;
    std::size_t Animation = 0; ///< among the object's own
    std::size_t Frame = 0;     ///< from its first one, 30 to a second
    double Yaw = 30;           ///< degrees, as those of the camera
    double Pitch = 15;
    double Zoom = 1;
    std::string Size = "800x600";
    std::string Background = "none"; ///< or RRGGBB
    bool IsSmooth = false;
    bool Wireframe = false;
};

/// Draws an object of a level or a set as a PNG file.
int SavePicture(const PictureOptions& options, const Streams& streams);

/// Draws all frames of an animation of a moveable as an animated PNG or WebP file, by the ending of
/// the output.
int SaveAnimation(const PictureOptions& options, const Streams& streams);

struct ContactOptions
{
    std::string File;   ///< a level or the list of a set
    std::string Output; ///< OUT.png
    std::int32_t Columns = 8;
    std::int32_t Side = 128; ///< pixels of a picture
    // Without one of these, all of them.
    bool Moveables = false;
    bool StaticMeshes = false;
    bool Sprites = false;
};

/// Draws the objects of a level or a set in rows, with their numbers and names, as a PNG file.
int SaveContactSheet(const ContactOptions& options, const Streams& streams);

struct GltfCommand
{
    std::string File;    ///< a level or the list of a set
    std::string Output;  ///< OUT.glb or OUT.gltf, for all objects
    std::string Folder;  ///< else where the files go, one for each object
    std::string Objects; ///< list of the objects to take; empty: all
    std::string Without; ///< list of those to leave out
    GltfOptions Look;
};

/// Writes objects of a level or a set as glTF files.
int SaveGltfFiles(GltfCommand command, const Streams& streams);

/// Understands a command line, without the program's name, and does what it says.
int RunCommandLine(std::vector<std::string> arguments, const Streams& streams);

} // namespace morlik::cli
