#include "output/WAD_Main.h"

#include "base/Text.h"
#include "convert/ConvertFrames.h"
#include "convert/ConvertMeshes.h"
#include "level/Sections.h"
#include "output/AnimDispatches.h"
#include "output/DataFiles.h"
#include "output/SWD_Main.h"
#include "output/TextureTiles.h"
#include "output/WAS_List.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr const char* kExtension = ".was";
constexpr const char* kBadTexture = "ERROR! Bad texture found!";
constexpr std::int32_t kUnused = -1; ///< texture number of a texture that no mesh uses

constexpr std::int32_t kWadVersion = 129;

/// The editor takes no more static meshes than this.
constexpr std::int32_t kMostStaticMeshes = 60;

/// A save that stops and leaves the program alive; the user has got the message.
class SaveStopped : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// One save. The stages and percentages of the status go with the blocks that they announce.
class Saver
{
public:
    Saver(const std::string& fileName, LevelData& level, const SaveContext& context)
        : fileName_(fileName),
          names_(fileName),
          level_(level),
          context_(context),
          report_(context.Report),
          textureNumbers_(level.TextInfos.size(), kUnused)
    {
    }

    /// Gives whether all files of the set are there.
    bool Run()
    {
        WriteWADFile();
        const PhaseScope writing(report_.Times, Phase::Write);
        bool complete = WriteSounds();
        complete &= WriteSprites();
        WriteList();
        Prog(0);
        TheHost().SetEvent("Ready.");
        report_.Info.Close();
        return complete;
    }

private:
    Host& TheHost() { return report_.TheHost(); }

    void Prog(float percent)
    {
        TheHost().SetProg(percent);
        TheHost().GiveTurn();
    }

    void Stage(const std::string& event, float percent)
    {
        TheHost().SetEvent(event);
        Prog(percent);
    }

    [[noreturn]] void StopSave(const std::string& message)
    {
        report_.Message(message);
        throw SaveStopped(message);
    }

    void WriteWADFile()
    {
        OutputFile file(names_.With("wad"), &report_.Times);
        report_.Info.Open(names_.Info());
        report_.LogLine("Writing WAD file " + fileName_);
        TheHost().SetProg(0);
        ConvertLevelMeshes();
        ConvertAnimations();
        WriteTextures(file);
        WriteTiles(file);
        WriteMeshes(file);
        WriteAnimations(file);
        WriteObjects(file);
        file.Close();
    }

    void ConvertLevelMeshes()
    {
        TheHost().SetEvent("Converting meshes");
        TheHost().SetProg(2);
        auto meshes =
            ConvertMeshes(level_, context_.State, numWadTextures_, textureNumbers_, report_);
        if (!meshes)
            throw SaveStopped("unknown texture");
        meshes_ = std::move(*meshes);
        TheHost().SetProg(10);
        FindTiles();
        TheHost().SetProg(12);
    }

    bool IsUsed(std::size_t texture) const { return textureNumbers_[texture] != kUnused; }

    /// The tiles that used textures lie on; the WAD file holds these and what lies between them.
    void FindTiles()
    {
        if (numWadTextures_ == 0)
            return;
        tiles_ = {level_.TileBytes / kTileBytes, 0};
        for (std::size_t i = 0; i < level_.TextInfos.size(); ++i) {
            if (!IsUsed(i))
                continue;
            tiles_.First = std::min<std::int32_t>(tiles_.First, level_.TextInfos[i].Tile);
            tiles_.Last = std::max<std::int32_t>(tiles_.Last, level_.TextInfos[i].Tile);
        }
    }

    void ConvertAnimations()
    {
        if (IsClassic(level_.Version))
            report_.LogLine("Building palette");
        Stage("Converting frames", 15);
        ConvertFrames(level_, context_.Names, report_);
        Stage("Fixing AnimDispatches", 20);
        FixAnimDispatches(level_, report_);
    }

    void WriteTextures(OutputFile& file)
    {
        Stage("Writing WAD", 25);
        const bool classic = IsClassic(level_.Version);
        const auto squares = classic ? static_cast<std::int32_t>(kNumPaletteTextures) : 0;
        file.Put(kWadVersion);
        file.Put(numWadTextures_ + squares);
        std::int32_t written = 0;
        for (const std::size_t texture : TexturesByNumber()) {
            file.Put(TextureRecord(texture));
            ++written;
        }
        if (classic) {
            file.Put(PaletteTextures(tiles_));
            written += squares;
        }
        if (written != numWadTextures_ + squares)
            report_.Stop("Error saving WAD!");
        Prog(30);
    }

    /// The used textures in the order of their numbers.
    std::vector<std::size_t> TexturesByNumber() const
    {
        std::vector<std::size_t> textures;
        for (std::size_t i = 0; i < textureNumbers_.size(); ++i)
            if (IsUsed(i))
                textures.push_back(i);
        std::sort(textures.begin(), textures.end(), [this](std::size_t a, std::size_t b) {
            return textureNumbers_[a] < textureNumbers_[b];
        });
        return textures;
    }

    /// The checked record of a texture, its tile counted from the first one of the file.
    TextInfo TextureRecord(std::size_t index)
    {
        TextInfo record = level_.TextInfos[index];
        const std::int32_t tile = record.Tile - tiles_.First;
        if (tile < 0 || tile >= tiles_.Count() || !tiles_.Fits(level_))
            StopSave(kBadTexture);
        const auto wrong = "Wrong TextInfo found - TextInfo" + std::to_string(index);
        if (record.X + record.Width > 255)
            report_.Stop(wrong + " -> X invalid");
        if (record.Y + record.Height > 255)
            report_.Stop(wrong + " -> Y invalid");
        record.Tile = static_cast<std::int16_t>(tile);
        return record;
    }

    void WriteTiles(OutputFile& file)
    {
        TheHost().SetEvent("Converting textures");
        ConvertTextureTiles(level_, context_.State, file, tiles_, report_);
        Stage("Writing WAD", 55);
    }

    void WriteMeshes(OutputFile& file)
    {
        file.PutCounted(meshes_.NumMeshPointers, meshes_.MeshPointers);
        Prog(57);
        file.PutCounted(meshes_.NumMeshWords, meshes_.MeshData.Bytes());
        Prog(60);
    }

    void WriteAnimations(OutputFile& file)
    {
        file.PutCounted(level_.NumAnimations, level_.Animations);
        Prog(62);
        file.PutCounted(level_.NumStateChanges, level_.StateChanges);
        Prog(65);
        file.PutCounted(level_.NumAnimDispatches, level_.AnimDispatches);
        Prog(67);
        file.PutCounted(level_.NumAnimCommands, level_.AnimCommands);
        Prog(70);
        file.PutCounted(level_.NumMeshTrees, level_.MeshTrees);
        Prog(72);
        file.PutCounted(level_.NumFrames, level_.Frames);
        Prog(75);
    }

    /// Objects of Tomb Raider V are known to the editor by their place in the tables.
    void WriteObjects(OutputFile& file)
    {
        const bool renumber = level_.Version == kTR5;
        file.Put(level_.NumMoveables);
        for (std::size_t i = 0; i < level_.Moveables.size(); ++i) {
            if (renumber)
                level_.Moveables[i].ObjectID = static_cast<std::int32_t>(i);
            MoveableFields::Write(file, level_.Moveables[i]);
        }
        Prog(77);

        if (level_.NumStaticMeshes > kMostStaticMeshes) {
            level_.NumStaticMeshes = kMostStaticMeshes;
            level_.StaticMeshes.resize(kMostStaticMeshes);
        }
        if (renumber)
            for (std::size_t i = 0; i < level_.StaticMeshes.size(); ++i)
                level_.StaticMeshes[i].ObjectID = static_cast<std::int32_t>(i);
        file.PutCounted(level_.NumStaticMeshes, level_.StaticMeshes);
    }

    bool WriteSounds()
    {
        Stage("Writing SAM", 80);
        bool complete = WriteSAM(names_, level_, context_.MainSFX, context_.FMLoad, report_);
        Stage("Writing SFX", 85);
        complete &= WriteSFX(names_, level_, report_);
        Stage("Writing SWD", 90);
        return complete;
    }

    /// The level's own sprites where the user asked for them, else the default file.
    bool WriteSprites()
    {
        report_.LogLine("Writing SWD file");
        if (TheHost().ExpSpr() && IsClassic(level_.Version)) {
            const auto tiles = SpriteTiles(level_);
            if (!tiles.Fits(level_))
                StopSave(kBadTexture);
            WriteSWD(names_.With("swd"), level_, context_.State, tiles, report_);
            return true;
        }
        const bool copied = CopyDataFile("morlik.swd", names_.With("swd"), report_);
        Stage("Writing WAS", 95);
        return copied;
    }

    void WriteList()
    {
        report_.LogLine("Writing WAS file");
        TextLines file;
        file.Open(names_.With("was"));
        WriteWAS(file, level_, context_.Names, context_.LevelTitle);
        Prog(100);
        file.Close();
    }

    const std::string& fileName_;
    OutputNames names_;
    LevelData& level_;
    const SaveContext& context_;
    Reporter& report_;
    std::vector<std::int32_t> textureNumbers_;
    std::int32_t numWadTextures_ = 0;
    TileRange tiles_;
    WadMeshSet meshes_;
};

/// Brings the status back to rest and the Info file to its end when a save stops on its way.
class SaveScope
{
public:
    explicit SaveScope(Reporter& report) : report_(report) {}
    SaveScope(const SaveScope&) = delete;
    SaveScope& operator=(const SaveScope&) = delete;
    ~SaveScope()
    {
        if (!report_.Info.IsOpen())
            return;
        report_.TheHost().SetProg(0);
        report_.TheHost().SetEvent("Ready.");
        report_.Info.Abandon();
    }

private:
    Reporter& report_;
};

} // namespace

bool SaveWAD(const std::string& fileName, LevelData& level, const SaveContext& context)
{
    if (!EndsWithNoCase(fileName, kExtension)) {
        context.Report.Message("You must save it as a was file");
        return false;
    }
    const SaveScope scope(context.Report);
    try {
        return Saver(fileName, level, context).Run();
    } catch (const SaveStopped&) {
        return false;
    } catch (const FileFailure& failure) {
        context.Report.Message(failure.what());
        return false;
    }
}

} // namespace morlik
