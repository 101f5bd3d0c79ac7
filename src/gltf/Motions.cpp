#include "gltf/Motions.h"

#include "base/AnimCommands.h"
#include "base/Narrow.h"

namespace morlik
{

namespace
{

using tinygltf::Value;

constexpr float kFramesInSecond = 30;

int NumberOfOwn(std::int16_t animation, std::size_t first)
{
    return animation - narrow<int>(first);
}

/// Of a 16.16 fixed point number.
Value FixedPoint(std::int32_t value)
{
    constexpr double kOne = 65536;
    return Value(value / kOne);
}

Value NoteOf(const std::vector<std::int16_t>& command)
{
    Value::Object note;
    const auto set = [&](const char* name, std::size_t word) {
        note[name] = Value(int{command[word]});
    };
    set("type", 0);
    switch (command[0]) {
    case 1:
        note["name"] = Value(std::string("move"));
        set("x", 1);
        set("y", 2);
        set("z", 3);
        break;
    case 2:
        note["name"] = Value(std::string("jump"));
        set("vertical", 1);
        set("horizontal", 2);
        break;
    case kSoundCommand: {
        note["name"] = Value(std::string("sound"));
        set("frame", 1);
        const auto word = static_cast<std::uint16_t>(command[2]);
        note["sound"] = Value(int{word} & int{kSoundNumberMask});
        note["where"] = Value(word / (kSoundNumberMask + 1));
        break;
    }
    case 6:
        note["name"] = Value(std::string("effect"));
        set("frame", 1);
        set("effect", 2);
        break;
    default: // the others have no operands
        break;
    }
    return Value(std::move(note));
}

Value NoteOf(const ModelStateChange& change, std::size_t firstAnimation)
{
    Value::Array dispatches;
    for (const AnimDispatch& dispatch : change.Dispatches)
        dispatches.emplace_back(
            Value::Object{{"low", Value(int{dispatch.Low})},
                          {"high", Value(int{dispatch.High})},
                          {"animation", Value(NumberOfOwn(dispatch.NextAnimation, firstAnimation))},
                          {"frame", Value(int{dispatch.NextFrame})}});
    return Value(Value::Object{{"state", Value(int{change.StateID})},
                               {"dispatches", Value(std::move(dispatches))}});
}

} // namespace

tinygltf::Value NotesOf(const Motion& motion, std::size_t firstAnimation)
{
    const Animation& record = motion.Source.Record;
    Value::Object notes{{"state", Value(int{record.State})},
                        {"frameRate", Value(int{record.FrameRate})},
                        {"frameStart", Value(int{record.FrameStart})},
                        {"frameEnd", Value(int{record.FrameEnd})},
                        {"speed", FixedPoint(record.Speed)},
                        {"acceleration", FixedPoint(record.Accel)},
                        {"lateralSpeed", FixedPoint(record.LateralSpeed)},
                        {"lateralAcceleration", FixedPoint(record.LateralAccel)},
                        {"nextAnimation", Value(NumberOfOwn(record.NextAnimation, firstAnimation))},
                        {"nextFrame", Value(int{record.NextFrame})}};
    Value::Array changes;
    for (const ModelStateChange& change : motion.StateChanges)
        changes.push_back(NoteOf(change, firstAnimation));
    if (!changes.empty())
        notes["stateChanges"] = Value(std::move(changes));
    Value::Array commands;
    for (const auto& command : motion.Commands)
        commands.push_back(NoteOf(command));
    if (!commands.empty())
        notes["commands"] = Value(std::move(commands));
    return Value(std::move(notes));
}

/// A key for each stored frame up to the last number, and one there. Behind the last stored frame
/// its pose stands still.
std::vector<Motions::Moment> Motions::MomentsOf(const Motion& motion)
{
    const Animation& record = motion.Source.Record;
    std::vector<Moment> moments;
    if (motion.Source.NumFrames == 0)
        return {{.Frame = 0, .Pose = 0, .Share = 0}};
    const auto last = narrow<std::size_t>(record.FrameEnd - record.FrameStart);
    const std::size_t rate = record.FrameRate;
    for (std::size_t pose = 0; pose < motion.Poses.size() && pose * rate <= last; ++pose)
        moments.push_back({.Frame = pose * rate, .Pose = pose, .Share = 0});
    const Moment back = moments.back();
    if (const std::size_t behind = last - back.Frame; behind > 0) {
        const bool hasNext = back.Pose + 1 < motion.Poses.size();
        moments.push_back({.Frame = last,
                           .Pose = back.Pose,
                           .Share = hasNext ? static_cast<double>(behind) / record.FrameRate : 0});
    }
    return moments;
}

int Motions::Times(const std::vector<Moment>& moments)
{
    std::vector<float> seconds;
    std::vector<std::array<float, 1>> values;
    for (const Moment& moment : moments) {
        seconds.push_back(static_cast<float>(moment.Frame) / kFramesInSecond);
        values.push_back({seconds.back()});
    }
    auto found = times_.find(seconds);
    if (found == times_.end())
        found = times_.emplace(seconds, document_.Add(ValueKind::Times, values, true)).first;
    return found->second;
}

void Motions::AddChannel(tinygltf::Animation& animation, int node, const char* path, int times,
                         int values)
{
    tinygltf::AnimationSampler sampler;
    sampler.input = times;
    sampler.output = values;
    tinygltf::AnimationChannel channel;
    channel.sampler = narrow<int>(animation.samplers.size());
    channel.target_node = node;
    channel.target_path = path;
    animation.samplers.push_back(std::move(sampler));
    animation.channels.push_back(std::move(channel));
}

tinygltf::Animation Motions::MotionOf(const Motion& motion, const std::vector<int>& nodes)
{
    tinygltf::Animation animation;
    const std::vector<Moment> moments = MomentsOf(motion);
    const int times = Times(moments);
    std::vector<std::array<float, 3>> moves;
    for (const Moment& moment : moments) {
        Point place = PointOf(motion.Poses[moment.Pose].Offset);
        if (moment.Share > 0) {
            const Point next = PointOf(motion.Poses[moment.Pose + 1].Offset);
            for (double Point::*const axis : {&Point::X, &Point::Y, &Point::Z})
                place.*axis += (next.*axis - place.*axis) * moment.Share;
        }
        moves.push_back(axes_.Place(place));
    }
    AddChannel(animation, nodes[0], "translation", times, document_.Add(ValueKind::Moves, moves));
    for (std::size_t mesh = 0; mesh < nodes.size(); ++mesh) {
        std::vector<std::array<float, 4>> turns;
        Quaternion before = QuaternionOf(motion.Poses[0].Rotations[mesh]);
        double side = 1;
        for (const Moment& moment : moments) {
            const Rotation& rotation = motion.Poses[moment.Pose].Rotations[mesh];
            Quaternion turn = QuaternionOf(rotation);
            if (moment.Share > 0)
                turn = Between(turn, QuaternionOf(motion.Poses[moment.Pose + 1].Rotations[mesh]),
                               moment.Share);
            if (CosineBetween(before, turn) < 0) // so that the way to it is the shorter one
                side = -side;
            before = turn;
            for (double Quaternion::*const part : kQuaternionParts)
                turn.*part *= side;
            turns.push_back(GltfAxes::Turn(turn));
        }
        AddChannel(animation, nodes[mesh], "rotation", times,
                   document_.Add(ValueKind::Turns, turns));
    }
    return animation;
}

void Motions::Add(const DecodedObject& object, const std::vector<int>& nodes,
                  const std::string& prefix)
{
    for (std::size_t number = 0; number < object.Motions.size(); ++number) {
        tinygltf::Animation animation = MotionOf(object.Motions[number], nodes);
        animation.name = prefix + std::to_string(number);
        animation.extras = NotesOf(object.Motions[number], object.FirstAnimation);
        document_.Tables.animations.push_back(std::move(animation));
    }
}

} // namespace morlik
