#include "base/Narrow.h"
#include "samples/Models.h"
#include "samples/RichParts.h"
#include "samples/Shapes.h"

namespace morlik::samples
{

namespace
{

constexpr int kQuarterTurn = 256; // of 1024

MeshContent Finished(MeshContent mesh, Shading shading = Shading::Normals)
{
    FinishMesh(mesh, shading);
    return mesh;
}

MeshContent Box(const Vector3& least, const Vector3& greatest, const BoxSkin& skin)
{
    MeshContent mesh;
    AddBox(mesh, least, greatest, skin);
    return Finished(std::move(mesh));
}

/// A frame of `meshes` meshes of which the last one turns.
FrameContent Frame(const std::array<std::int16_t, 6>& box, std::size_t meshes, const Rotation& last)
{
    FrameContent frame{.Box = box, .Rotations = std::vector<Rotation>(meshes)};
    frame.Rotations.back() = last;
    return frame;
}

void AddCrate(LevelContent& level, const RichTextures& textures)
{
    const std::int16_t side = textures.Of(Art::CrateSide);
    const std::int16_t top = textures.Of(Art::CrateTop);
    const auto mesh = AddMesh(
        level, Box({-512, -1024, -512}, {512, 0, 512},
                   {side, textures.CrateSideAgain, side, textures.CrateSideAgain, top, top}));
    AddMoveable(
        level,
        {.ObjectID = ObjectIDsOf(level.Game).Crate,
         .Meshes = {mesh},
         .Animations = {{.State = 1, .Frames = {Frame({-512, 512, -1024, 0, -512, 512}, 1, {})}}}});
}

/// A plate on the wall and a lever that goes down and up again.
void AddSwitch(LevelContent& level, const RichTextures& textures)
{
    const std::array<std::int16_t, 6> bounds{-80, 80, -700, -400, -200, 0};
    const auto plate = AddMesh(
        level, Box({-80, -700, -16}, {80, -400, 0}, BoxSkin::Of(textures.Of(Art::SwitchPlate))));
    const auto lever =
        AddMesh(level, Box({-20, -160, -20}, {20, 0, 20}, BoxSkin::Of(textures.Of(Art::Lever))));
    MeshContent& shiny = level.Meshes[plate];
    for (MeshFace& face : shiny.Rectangles)
        face.Attribute = 0x24;

    const auto move = [&bounds](int from, int to) {
        constexpr int kSteps = 6;
        AnimationContent animation;
        for (int step = 0; step <= kSteps; ++step)
            animation.Frames.push_back(
                Frame(bounds, 2, {from + (to - from) * step / kSteps, 0, 0}));
        return animation;
    };
    AnimationContent down = move(kQuarterTurn / 2, 3 * kQuarterTurn / 2);
    down.Next = 1;
    down.State = 1;
    down.Transitions = {{.ToState = 0, .Low = 0, .High = 6, .Animation = 1, .Frame = 7}};
    down.Commands = {5, 0, kSwitchSound};
    down.NumCommands = 1;
    AnimationContent up = move(3 * kQuarterTurn / 2, kQuarterTurn / 2);
    // Into the animation of another object: a way out that an object set does not allow.
    up.Transitions = {{.ToState = 1, .Low = 7, .High = 13, .Animation = -1}};
    AddMoveable(level, {.ObjectID = ObjectIDsOf(level.Game).Switch,
                        .Meshes = {plate, lever},
                        .Joints = {{0, 0, -550, -20}},
                        .Animations = {down, up}});
}

MeshContent DoorFrameMesh(const RichTextures& textures)
{
    const BoxSkin skin = BoxSkin::Of(textures.Of(Art::DoorFrame));
    MeshContent mesh;
    AddBox(mesh, {-512, -1024, -64}, {-400, 0, 64}, skin);
    AddBox(mesh, {400, -1024, -64}, {512, 0, 64}, skin);
    AddBox(mesh, {-400, -1024, -64}, {400, -900, 64}, skin);
    return Finished(std::move(mesh));
}

/// A frame and a leaf that swings by a quarter turn.
void AddDoor(LevelContent& level, const RichTextures& textures)
{
    const std::array<std::int16_t, 6> bounds{-512, 512, -1024, 0, -800, 64};
    const auto frameMesh = AddMesh(level, DoorFrameMesh(textures));
    BoxSkin skin = BoxSkin::Of(textures.Of(Art::DoorFrame));
    skin.Front = textures.Of(Art::Door);
    skin.Back = textures.MirroredDoor; // the knob stays at the free edge
    const auto leaf = AddMesh(level, Box({0, -900, -32}, {800, 0, 32}, skin));

    constexpr int kSteps = 8;
    AnimationContent closed{.Next = 0, .Transitions = {{.ToState = 1, .Animation = 1, .Frame = 1}}};
    closed.Frames = {Frame(bounds, 2, {})};
    AnimationContent opening{
        .State = 1, .Next = 2, .Commands = {5, 1, kDoorOpenSound}, .NumCommands = 1};
    AnimationContent open{
        .State = 1,
        .Next = 2,
        .Transitions = {{.ToState = 0, .Low = 10, .High = 10, .Animation = 3, .Frame = 11}}};
    open.Frames = {Frame(bounds, 2, {0, kQuarterTurn, 0})};
    AnimationContent closing{.Next = 0, .Commands = {5, 11, kDoorCloseSound}, .NumCommands = 1};
    for (int step = 0; step <= kSteps; ++step) {
        const int angle = kQuarterTurn * step / kSteps;
        opening.Frames.push_back(Frame(bounds, 2, {0, angle, 0}));
        closing.Frames.push_back(Frame(bounds, 2, {0, kQuarterTurn - angle, 0}));
    }
    AddMoveable(level, {.ObjectID = ObjectIDsOf(level.Game).Door,
                        .Meshes = {frameMesh, leaf},
                        .Joints = {{0, -400, 0, 0}},
                        .Animations = {closed, opening, open, closing}});
}

/// A tower with a roof and eight sails that turn.
void AddMill(LevelContent& level, const RichTextures& textures)
{
    const std::array<std::int16_t, 6> bounds{-640, 640, -1700, 0, -320, 280};
    MeshContent tower;
    AddBox(tower, {-280, -1200, -280}, {280, 0, 280}, BoxSkin::Of(textures.Of(Art::MillWall)));
    AddRoof(tower, {-340, -1650, -340}, {340, -1200, 340}, textures.Roof);
    const auto towerMesh = AddMesh(level, Finished(std::move(tower)));
    MeshContent sails;
    AddSails(sails, 640, textures.Sails);
    const auto sailsMesh = AddMesh(level, Finished(std::move(sails)));

    constexpr int kSteps = 16;
    AnimationContent turning{.State = 1, .Commands = {5, 0, kMillSound}, .NumCommands = 1};
    for (int step = 0; step < kSteps; ++step)
        turning.Frames.push_back(Frame(bounds, 2, {0, 0, step * 4 * kQuarterTurn / kSteps}));
    AddMoveable(level, {.ObjectID = ObjectIDsOf(level.Game).Mill,
                        .Meshes = {towerMesh, sailsMesh},
                        .Joints = {{0, 0, -1050, -310}},
                        .Animations = {turning}});
}

/// A blade on a rod; it swings about two axes.
void AddPendulum(LevelContent& level, const RichTextures& textures)
{
    const std::array<std::int16_t, 6> bounds{-400, 400, -1024, 0, -200, 200};
    MeshContent mesh;
    AddBox(mesh, {-24, 0, -24}, {24, 700, 24}, BoxSkin::Of(textures.Of(Art::Lever)));
    AddBox(mesh, {-220, 700, -12}, {220, 900, 12}, BoxSkin::Of(textures.Of(Art::Blade)));
    const auto blade = AddMesh(level, Finished(std::move(mesh)));
    AnimationContent swing{
        .State = 1, .FrameRate = 2, .Commands = {5, 0, kPendulumSound}, .NumCommands = 1};
    for (const int angle : {-120, -90, -40, 10, 60, 100, 120, 100, 60, 10, -40, -90}) {
        FrameContent frame = Frame(bounds, 1, {angle / 6, 0, angle});
        frame.Offset = {0, -1000, 0};
        swing.Frames.push_back(frame);
    }
    AddMoveable(
        level,
        {.ObjectID = ObjectIDsOf(level.Game).Pendulum, .Meshes = {blade}, .Animations = {swing}});
}

/// A dome with a rim below eye level. In the older games its faces are plain colours, those of
/// the rim with no blue; later games have textures.
MeshContent HorizonMesh(const LevelContent& level, const RichTextures& textures)
{
    constexpr std::int16_t kRadius = 3000;
    constexpr std::int16_t kTop = -2000;
    constexpr std::int16_t kWaist = -400;
    constexpr std::int16_t kBottom = 600;
    MeshContent dome;
    const auto paint = [&](Ink ink, int shade) {
        if (IsOlderGame(level.Game))
            PaintFaces(dome, ColourWord(level.Game, PaletteIndex(ink, shade)));
    };
    AddRing(dome, kRadius, kTop, kWaist, textures.Of(Art::Cloud));
    AddLid(dome, kRadius, kTop, true, textures.Roof);
    paint(Ink::Sky, kFullShade);
    AddRing(dome, kRadius, kWaist, kBottom, textures.Of(Art::Meadow));
    AddLid(dome, kRadius, kBottom, false, textures.Rock);
    paint(Ink::Red, kFullShade / 3);
    TurnInsideOut(dome);
    return Finished(std::move(dome));
}

void AddMedipack(LevelContent& level, const RichTextures& textures)
{
    const auto mesh =
        AddMesh(level, Box({-60, -90, -60}, {60, 0, 60}, BoxSkin::Of(textures.Of(Art::Medipack))));
    AddMoveable(level, {.ObjectID = ObjectIDsOf(level.Game).Medipack, .Meshes = {mesh}});
}

/// Pistols and the camera target, the last two objects: neither has animations.
void AddStillObjects(LevelContent& level, const RichTextures& textures)
{
    const ObjectIDs ids = ObjectIDsOf(level.Game);
    MeshContent pistol;
    AddBox(pistol, {-110, -60, -12}, {60, -30, 12}, BoxSkin::Of(textures.Of(Art::Blade)));
    AddBox(pistol, {20, -30, -12}, {60, 40, 12}, BoxSkin::Of(textures.Of(Art::Boot)));
    AddMoveable(level,
                {.ObjectID = ids.Pistols, .Meshes = {AddMesh(level, Finished(std::move(pistol)))}});
    const auto cube = AddMesh(
        level, Box({-64, -64, -64}, {64, 64, 64}, BoxSkin::Of(textures.Of(Art::SwitchPlate))));
    AddMoveable(level, {.ObjectID = ids.Target, .Meshes = {cube}});
}

} // namespace

ObjectIDs ObjectIDsOf(VersionCode game)
{
    constexpr std::int32_t kNone = -1;
    switch (game) {
    case kTR2:
        return {.Medipack = 171,
                .Pendulum = 58,
                .Crate = 67,
                .Switch = 93,
                .Door = 106,
                .Mill = 95,
                .Horizon = 254,
                .Pistols = 157,
                .Target = 243};
    case kTR3:
        return {.Medipack = 176,
                .Pendulum = 86,
                .Crate = 97,
                .Switch = 128,
                .Door = 131,
                .Mill = 120,
                .Horizon = 355,
                .Pistols = 160,
                .Target = 304};
    case kTR4:
        return {.Medipack = 369,
                .Pendulum = 134,
                .Crate = 156,
                .Switch = 306,
                .Door = 322,
                .Mill = 140,
                .Horizon = 459,
                .Pistols = 349,
                .Target = 422};
    case kTR5:
        return {.Medipack = 350,
                .Pendulum = 119,
                .Crate = 137,
                .Switch = 266,
                .Door = 284,
                .Mill = 129,
                .Horizon = 454,
                .Pistols = 334,
                .Target = 409};
    default:
        return {.Medipack = 108,
                .Pendulum = 36,
                .Crate = 48,
                .Switch = 55,
                .Door = 57,
                .Mill = 74,
                .Horizon = kNone,
                .Pistols = 99,
                .Target = 169};
    }
}

void AddObjects(LevelContent& level, const RichTextures& textures)
{
    AddMedipack(level, textures);
    AddPendulum(level, textures);
    AddCrate(level, textures);
    AddSwitch(level, textures);
    AddDoor(level, textures);
    AddMill(level, textures);
    const std::int32_t horizon = ObjectIDsOf(level.Game).Horizon;
    if (horizon >= 0) {
        const auto mesh = AddMesh(level, HorizonMesh(level, textures));
        AddMoveable(level, {.ObjectID = horizon, .Meshes = {mesh}});
    }
    AddStillObjects(level, textures);
}

} // namespace morlik::samples
