#include "base/Narrow.h"
#include "samples/Models.h"

#include <cmath>
#include <numbers>

namespace morlik::samples
{

namespace
{

/// Places of some meshes in the moveable.
enum Part : std::size_t
{
    kLeftThigh = 1,
    kLeftShin,
    kRightThigh = 4,
    kRightShin,
    kTorso = 7,
    kRightArm,
    kLeftArm = 11,
    kHead = 14
};

/// Where each mesh hangs, and its box. The legs hang on the hips, arms and head on the torso: the
/// hips are pushed (2) with the first thigh and fetched again (1) for the second and, for good, for
/// the torso.
struct Limb
{
    Joint Place;
    Vertex Least{};
    Vertex Greatest{};
    Art Skin = Art::Unused; ///< for the other side's limb, three meshes before
};
constexpr std::array<Limb, 15> kLimbs{{
    {{}, {-75, -50, -45}, {75, 50, 45}, Art::Boot},
    {{2, -42, 40, 0}, {-32, 0, -36}, {32, 170, 36}, Art::Skin},
    {{0, 0, 165, 0}, {-28, 0, -30}, {28, 150, 30}, Art::Skin},
    {{0, 0, 145, 0}, {-32, 0, -90}, {32, 60, 36}, Art::Boot},
    {{3, 42, 40, 0}},
    {{0, 0, 165, 0}},
    {{0, 0, 145, 0}},
    {{1, 0, -45, 0}, {-80, -200, -50}, {80, 0, 50}, Art::Shirt},
    {{2, 106, -190, 0}, {-24, 0, -26}, {24, 110, 26}, Art::Shirt},
    {{0, 0, 105, 0}, {-22, 0, -22}, {22, 100, 22}, Art::Skin},
    {{0, 0, 95, 0}, {-20, 0, -22}, {20, 50, 22}, Art::Boot},
    {{3, -106, -190, 0}},
    {{0, 0, 105, 0}},
    {{0, 0, 95, 0}},
    {{1, 0, -205, 0}, {-46, -110, -50}, {46, 0, 46}, Art::Skin},
}};

constexpr int kFrames = 8; ///< of each animation

/// A wave of `height` that takes an animation, as a whole number.
int Wave(int height, int frame)
{
    return static_cast<int>(std::lround(height * std::sin(frame * 2 * std::numbers::pi / kFrames)));
}

/// An animation whose hips go up and down by `rise` and whose frames are turned by `turn`.
template <class Turn>
AnimationContent Animate(const Animation& record, int rise, Turn turn)
{
    AnimationContent animation{.Record = record};
    for (int f = 0; f < kFrames; ++f) {
        FrameContent frame{.Box = {-130, 130, -770, 0, -140, 140},
                           .Offset = {0, Word(-410 - Wave(rise, f)), 0},
                           .Rotations = std::vector<Rotation>(kLimbs.size())};
        turn(frame.Rotations, f);
        animation.Frames.push_back(std::move(frame));
    }
    return animation;
}

AnimationContent Stand()
{
    auto stand = Animate({.FrameRate = 4, .State = 2}, 0, [](auto& turned, int f) {
        turned[kTorso] = {Wave(12, f), Wave(20, f), 0};
        turned[kHead] = {0, Wave(60, f), 0};
        turned[kRightArm] = {0, 0, -40 + Wave(10, f)};
        turned[kLeftArm] = {0, 0, 40 - Wave(10, f)};
    });
    stand.Ways = {{std::int16_t{1}, {0, 32, 1, 32}}};
    return stand;
}

/// Both feet are heard; with the other commands behind them it has those of all lengths.
AnimationContent Walk()
{
    const Animation record{
        .FrameRate = 2, .State = 1, .Speed = 0x140000, .NextAnimation = 1, .NumAnimCommands = 6};
    auto walk = Animate(record, 8, [](auto& turned, int f) {
        turned[kLeftThigh] = turned[kRightArm] = {Wave(90, f), 0, 0};
        turned[kRightThigh] = turned[kLeftArm] = {-Wave(90, f), 0, 0};
        turned[kLeftShin] = {60 + Wave(50, f + 2), 0, 0};
        turned[kRightShin] = {60 - Wave(50, f + 2), 0, 0};
    });
    walk.Ways = {{std::int16_t{2}, {32, 48, 0, 0}}};
    walk.Commands = {5, 32, kStepSound, 5, 40, kStepSound, 1, 0, -10, 0, 2, -60, 0, 3, 6, 33, 7};
    return walk;
}

} // namespace

void AddLara(LevelContent& level, const ArtTextures& textures)
{
    MoveableContent lara{.Animations = {Stand(), Walk()}};
    for (const Limb& limb : kLimbs) {
        MeshContent mesh;
        AddBox(mesh, limb.Least, limb.Greatest, textures.Of(limb.Skin));
        const bool isOther = limb.Skin == Art::Unused;
        lara.Meshes.push_back(isOther ? lara.Meshes.at(lara.Meshes.size() - 3)
                                      : AddShape(level, std::move(mesh)));
        lara.Joints.push_back(limb.Place);
    }
    lara.Joints.erase(lara.Joints.begin()); // the hips hang on nothing
    level.Meshes.back().Rectangles.front().Texture = textures.Of(Art::Face);
    AddMoveable(level, lara);
}

} // namespace morlik::samples
