// morlik-cli contact: all objects of a level or a set in one picture.

#include "base/Folders.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/ObjectList.h"
#include "cli/OpenSet.h"
#include "cli/QuietHost.h"
#include "picture/ContactSheet.h"
#include "picture/PNG.h"
#include "picture/Render.h"

namespace morlik::cli
{

namespace
{

/// An object of the sheet: its label, and how its picture comes.
struct SheetObject
{
    std::string Label;
    std::function<Picture()> Draw;
};

/// Draws the objects of a set.
class SheetMaker
{
public:
    SheetMaker(const OpenedSet& opened, const ContactOptions& options, Reporter& report)
        : opened_(opened), report_(report)
    {
        look_.Columns = options.Columns;
        look_.Side = options.Side;
        const bool all = !options.Moveables && !options.StaticMeshes && !options.Sprites;
        if (all || options.Moveables)
            Add("", opened.Moveables, [this](std::size_t place) {
                const ShownObject shown = opened_.Objects->Find({false, place});
                return DrawScene(SceneOfMoveable(shown.In->Set, shown.Place), *shown.In);
            });
        if (all || options.StaticMeshes)
            Add("static ", opened.StaticMeshes, [this](std::size_t place) {
                const ShownObject shown = opened_.Objects->Find({true, place});
                return DrawScene(SceneOfStaticMesh(shown.In->Set, shown.Place), *shown.In);
            });
        if (all || options.Sprites)
            AddSprites();
    }
    SheetMaker(const SheetMaker&) = delete;
    SheetMaker& operator=(const SheetMaker&) = delete;

    /// Writes the sheet. Gives whether all of it could be drawn.
    bool Save(const std::string& output)
    {
        if (objects_.empty()) {
            report_.Message("There are no such objects");
            return false;
        }
        std::vector<std::string> labels;
        labels.reserve(objects_.size());
        for (const SheetObject& object : objects_)
            labels.push_back(object.Label);
        const MessageScope messages(report_);
        const auto sheet =
            MakeContactSheet(labels, look_, [this](std::size_t i) { return DrawOrTell(i); });
        if (!sheet) {
            report_.Message("The sheet would be larger than " + std::to_string(kMostPictureSide) +
                            " pixels; take smaller pictures or another number of columns");
            return false;
        }
        MakeFolder(ToPath(output).parent_path());
        WritePNG(output, *sheet);
        return isWhole_;
    }

private:
    void Add(const std::string& kind, const std::vector<NamedObject>& objects,
             const std::function<Picture(std::size_t place)>& draw)
    {
        for (const NamedObject& object : objects)
            objects_.push_back({kind + NumberAndName(object.ObjectID, object.Names[0]),
                                [draw, place = object.Place] { return draw(place); }});
    }

    void AddSprites()
    {
        if (opened_.Sprites.empty())
            return;
        const SpriteTables& sprites = *opened_.Whole().Sprites;
        spriteTextures_.emplace(sprites.Tiles);
        Add("sprites ", opened_.Sprites, [this, &sprites](std::size_t place) {
            return DrawSprites(sprites, sprites.SpriteSequences[place], look_.Side,
                               look_.Background, *spriteTextures_);
        });
    }

    Picture DrawScene(const Scene& scene, ShownSet& in)
    {
        Camera camera = ObliqueCamera();
        FrameTo(camera, scene, 1);
        return Render(scene, camera,
                      {.Width = look_.Side, .Height = look_.Side, .Background = look_.Background},
                      in.Textures);
    }

    /// A damaged object leaves its place empty.
    Picture DrawOrTell(std::size_t i)
    {
        try {
            return objects_[i].Draw();
        } catch (const ReadFailure& failure) {
            isWhole_ = false;
            report_.Message(objects_[i].Label + " can't be drawn", kAppTitle, failure.what());
            return {};
        }
    }

    const OpenedSet& opened_;
    Reporter& report_;
    SheetLook look_;
    std::optional<TexturePixels> spriteTextures_;
    std::vector<SheetObject> objects_;
    bool isWhole_ = true;
};

} // namespace

int SaveContactSheet(const ContactOptions& options, const Streams& streams)
{
    if (const int status = CheckPictureFiles(options.File, options.Output, streams);
        status != kGood)
        return status;
    return RunQuietly(streams, [&](Session& session) {
        const OpenedSet opened = OpenSet(session, options.File);
        return SheetMaker(opened, options, session.Report).Save(options.Output);
    });
}

} // namespace morlik::cli
