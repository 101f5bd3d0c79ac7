#include "samples/Models.h"
#include "samples/RichParts.h"
#include "samples/Shapes.h"

#include <cmath>
#include <numbers>

namespace morlik::samples
{

namespace
{

constexpr std::size_t kMeshes = 15;

/// Places of the meshes in the moveable.
enum Limb : std::uint8_t
{
    kHips,
    kLeftThigh,
    kLeftShin,
    kLeftFoot,
    kRightThigh,
    kRightShin,
    kRightFoot,
    kTorso,
    kRightUpperArm,
    kRightForearm,
    kRightHand,
    kLeftUpperArm,
    kLeftForearm,
    kLeftHand,
    kHead
};

std::size_t AddLimb(LevelContent& level, const Vector3& least, const Vector3& greatest,
                    const BoxSkin& skin)
{
    MeshContent mesh;
    AddBox(mesh, least, greatest, skin);
    FinishMesh(mesh, Shading::Normals);
    return AddMesh(level, mesh);
}

std::vector<std::size_t> AddLimbs(LevelContent& level, const RichTextures& textures)
{
    const auto all = [&textures](Art art) { return BoxSkin::Of(textures.Of(art)); };
    BoxSkin headSkin = all(Art::Hair);
    headSkin.Front = textures.Of(Art::Face);
    const auto hips = AddLimb(level, {-75, -50, -45}, {75, 50, 45}, all(Art::Shorts));
    const auto thigh = AddLimb(level, {-32, 0, -36}, {32, 170, 36}, all(Art::Skin));
    const auto shin = AddLimb(level, {-28, 0, -30}, {28, 150, 30}, all(Art::Skin));
    const auto foot = AddLimb(level, {-32, 0, -90}, {32, 60, 36}, all(Art::Boot));
    const auto torso = AddLimb(level, {-80, -200, -50}, {80, 0, 50}, all(Art::Shirt));
    const auto upperArm = AddLimb(level, {-24, 0, -26}, {24, 110, 26}, all(Art::Shirt));
    const auto forearm = AddLimb(level, {-22, 0, -22}, {22, 100, 22}, all(Art::Skin));
    const auto hand = AddLimb(level, {-20, 0, -22}, {20, 50, 22}, all(Art::Boot));
    const auto head = AddLimb(level, {-46, -110, -50}, {46, 0, 46}, headSkin);
    return {hips,     thigh,   shin, foot,     thigh,   shin, foot, torso,
            upperArm, forearm, hand, upperArm, forearm, hand, head};
}

/// The legs hang on the hips, arms and head on the torso: the hips are pushed with the first
/// thigh and fetched again for the second and, for good, for the torso.
std::vector<Joint> JointsOfLimbs()
{
    constexpr std::int32_t kPop = 1;
    constexpr std::int32_t kPush = 2;
    return {{kPush, -42, 40, 0},
            {0, 0, 165, 0},
            {0, 0, 145, 0},
            {kPop | kPush, 42, 40, 0},
            {0, 0, 165, 0},
            {0, 0, 145, 0},
            {kPop, 0, -45, 0},
            {kPush, 106, -190, 0},
            {0, 0, 105, 0},
            {0, 0, 95, 0},
            {kPop | kPush, -106, -190, 0},
            {0, 0, 105, 0},
            {0, 0, 95, 0},
            {kPop, 0, -205, 0}};
}

/// A wave of `height` that takes `count` frames, as a whole number.
int Wave(int height, int frame, int count)
{
    return static_cast<int>(std::lround(height * std::sin(frame * 2 * std::numbers::pi / count)));
}

constexpr int kFrames = 8;
constexpr std::int16_t kHipHeight = -410;

FrameContent Pose(std::int16_t hipHeight)
{
    return {.Box = {-130, 130, -770, 0, -140, 140},
            .Offset = {0, hipHeight, 0},
            .Rotations = std::vector<Rotation>(kMeshes)};
}

AnimationContent Stand()
{
    AnimationContent stand{.State = 2, .FrameRate = 4, .Next = 0};
    for (int f = 0; f < kFrames; ++f) {
        FrameContent frame = Pose(kHipHeight);
        frame.Rotations[kTorso] = {Wave(12, f, kFrames), Wave(20, f, kFrames), 0};
        frame.Rotations[kHead] = {0, Wave(60, f, kFrames), 0};
        frame.Rotations[kRightUpperArm] = {0, 0, -40 + Wave(10, f, kFrames)};
        frame.Rotations[kLeftUpperArm] = {0, 0, 40 - Wave(10, f, kFrames)};
        stand.Frames.push_back(frame);
    }
    stand.Transitions = {
        {.ToState = 1, .Low = 0, .High = 4 * kFrames, .Animation = 1, .Frame = 4 * kFrames}};
    return stand;
}

AnimationContent Walk()
{
    constexpr std::int16_t kFirst = 4 * kFrames; // number of its first frame
    constexpr std::int16_t kPlaySound = 5;
    AnimationContent walk{.State = 1, .FrameRate = 2, .Next = 1};
    for (int f = 0; f < kFrames; ++f) {
        FrameContent frame = Pose(static_cast<std::int16_t>(kHipHeight + Wave(8, 2 * f, kFrames)));
        const int swing = Wave(90, f, kFrames);
        frame.Rotations[kLeftThigh] = {swing, 0, 0};
        frame.Rotations[kLeftShin] = {60 + Wave(50, f + 2, kFrames), 0, 0};
        frame.Rotations[kRightThigh] = {-swing, 0, 0};
        frame.Rotations[kRightShin] = {60 - Wave(50, f + 2, kFrames), 0, 0};
        frame.Rotations[kRightUpperArm] = {swing, 0, -20};
        frame.Rotations[kLeftUpperArm] = {-swing, 0, 20};
        walk.Frames.push_back(frame);
    }
    walk.Transitions = {{.ToState = 2, .Low = kFirst, .High = kFirst + 2 * kFrames}};
    walk.Commands = {kPlaySound, kFirst, kStepSound, kPlaySound, kFirst + 8, kStepSound};
    walk.NumCommands = 2;
    walk.Speed = 0x140000;
    return walk;
}

} // namespace

void AddLara(LevelContent& level, const RichTextures& textures)
{
    AddMoveable(level, {.ObjectID = 0,
                        .Meshes = AddLimbs(level, textures),
                        .Joints = JointsOfLimbs(),
                        .Animations = {Stand(), Walk()}});
}

} // namespace morlik::samples
