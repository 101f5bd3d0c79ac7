// morlik-cli picture: an object of a level or a set, drawn.

#include "base/Folders.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/OpenSet.h"
#include "cli/PictureLook.h"
#include "cli/QuietHost.h"
#include "picture/PNG.h"

namespace morlik::cli
{

namespace
{

Scene SceneOf(const ObjectSet& set, std::size_t object, const PictureOptions& options)
{
    if (options.IsStatic)
        return SceneOfStaticMesh(set, object);
    return SceneOfMoveable(set, object, {.Animation = options.Animation, .Number = options.Frame});
}

Picture Draw(const ShownObject& object, const PictureOptions& options, const RenderOptions& look)
{
    const Scene scene = SceneOf(object.In->Set, object.Place, options);
    Camera camera = CameraOf(options);
    FrameTo(camera, scene, static_cast<double>(look.Width) / look.Height);
    return Render(scene, camera, look, object.In->Textures);
}

} // namespace

int SavePicture(const PictureOptions& options, const Streams& streams)
{
    const auto look = LookOf(options, streams);
    if (!look)
        return kWrongUse;
    if (const int status = CheckPictureFiles(options.File, options.Output, streams);
        status != kGood)
        return status;
    return RunQuietly(streams, [&](Session& session) {
        const OpenedSet opened = OpenSet(session, options.File);
        const auto& objects = options.IsStatic ? opened.StaticMeshes : opened.Moveables;
        const auto object = FindObject(objects, options.Object, session.Report);
        if (!object)
            return false;
        const ShownObject shown = opened.Objects->Find({options.IsStatic, *object});
        MakeFolder(ToPath(options.Output).parent_path());
        WritePNG(options.Output, Draw(shown, options, *look));
        return true;
    });
}

} // namespace morlik::cli
