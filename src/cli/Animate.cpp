// morlik-cli animate: an animation of an object of a level or a set as a file that moves.

#include "base/Folders.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/OpenSet.h"
#include "cli/PictureLook.h"
#include "cli/QuietHost.h"
#include "picture/Animation.h"
#include "picture/MovingFile.h"

namespace morlik::cli
{

int SaveAnimation(const PictureOptions& options, const Streams& streams)
{
    const auto look = LookOf(options, streams);
    if (!look)
        return kWrongUse;
    if (const int status = CheckPictureFiles(options.File, options.Output, streams, true);
        status != kGood)
        return status;
    return RunQuietly(streams, [&](Session& session) {
        const OpenedSet opened = OpenSet(session, options.File);
        const auto object = FindObject(opened.Moveables, options.Object, session.Report);
        if (!object)
            return false;
        const ShownObject shown = opened.Objects->Find({.IsStatic = false, .Index = *object});
        const AnimatedScene animated(shown.In->Set, shown.Place, options.Animation);
        MakeFolder(ToPath(options.Output).parent_path());
        const auto file = EndsWithNoCase(options.Output, ".webp")
                              ? NewAnimatedWebP(options.Output, animated.NumFrames())
                              : NewAnimatedPNG(options.Output, animated.NumFrames());
        const auto take = [&](const Picture& picture) {
            if (session.Report.TheHost().StopRequested())
                throw Interrupted();
            file->Add(picture);
        };
        DrawAnimation(animated, CameraOf(options), *look, shown.In->Textures, take);
        file->TakePlace();
        return true;
    });
}

} // namespace morlik::cli
