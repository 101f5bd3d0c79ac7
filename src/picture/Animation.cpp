#include "picture/Animation.h"

#include "base/Narrow.h"
#include "model/Animations.h"
#include "model/Damage.h"

namespace morlik
{

namespace
{

std::size_t CountFrames(const ObjectSet& set, std::size_t moveable, std::size_t number)
{
    const AnimationRange range = AnimationsOf(set, moveable);
    if (range.Count == 0 && number == 0)
        return 1;
    const ModelAnimation animation = AnimationOf(set, range, number);
    const Animation& record = animation.Record;
    return animation.NumFrames == 0 ? 1
                                    : narrow<std::size_t>(record.FrameEnd - record.FrameStart + 1);
}

std::size_t CountParts(const Model& model)
{
    std::size_t parts = 1;
    for (const MeshGeometry& mesh : model.Meshes)
        parts += 1 + mesh.Positions.size() + mesh.Faces.size();
    return parts;
}

} // namespace

AnimatedScene::AnimatedScene(const ObjectSet& set, std::size_t moveable, std::size_t animation)
    : set_(set),
      moveable_(moveable),
      animation_(animation),
      model_(ModelOfMoveable(set, moveable)),
      numFrames_(CountFrames(set, moveable, animation))
{
    if (const std::size_t parts = CountParts(model_); numFrames_ > kMostAnimationParts / parts)
        FailDamaged("animation ", animation, ": ", numFrames_, " frames of ", parts,
                    " meshes, vertices and faces");
}

Scene AnimatedScene::Frame(std::size_t number) const
{
    return SceneOf(
        set_, model_,
        TransformsAt(set_, moveable_, model_.Joints, {.Animation = animation_, .Number = number}));
}

void DrawAnimation(const AnimatedScene& animated, const Camera& view, const RenderOptions& options,
                   TexturePixels& textures, const std::function<void(const Picture&)>& take)
{
    const auto pixels =
        static_cast<std::size_t>(options.Width) * static_cast<std::size_t>(options.Height);
    if (animated.NumFrames() > kMostAnimationPixels / (pixels + kFrameCost))
        FailDamaged(animated.NumFrames(), " frames are too many for pictures of ", options.Width,
                    " by ", options.Height, " pixels");
    Framing framing(view, static_cast<double>(options.Width) / options.Height);
    for (std::size_t frame = 0; frame < animated.NumFrames(); ++frame)
        framing.Add(animated.Frame(frame));
    Camera camera = view;
    framing.FrameIn(camera);
    std::int64_t samplesLeft = kMostAnimationSamples;
    for (std::size_t frame = 0; frame < animated.NumFrames(); ++frame)
        take(Render(animated.Frame(frame), camera, options, textures, &samplesLeft));
}

} // namespace morlik
