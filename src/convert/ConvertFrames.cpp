#include "convert/ConvertFrames.h"

namespace morlik
{

namespace
{

constexpr std::int64_t kHeaderWords = 9;
constexpr std::uint16_t kOneWordMask = 0xc000;
constexpr std::uint16_t kAngleMask = 0x3ff;

/// Steps that a conversion may take beyond some for each word of the frames. Damaged offsets that
/// let every animation run over all frames would take hours.
constexpr std::int64_t kSpareSteps = std::int64_t{1} << 22;
constexpr std::int64_t kStepsPerWord = 4;

/// The quotient rounded to the nearest integer, a half to the even neighbour; 0 where the divisor
/// is 0.
std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor)
{
    if (divisor == 0)
        return 0;
    std::int64_t quotient = dividend / divisor;
    std::int64_t rest = dividend % divisor;
    if (rest < 0) {
        rest += divisor;
        --quotient;
    }
    const bool up = 2 * rest > divisor || (2 * rest == divisor && quotient % 2 != 0);
    return up ? quotient + 1 : quotient;
}

/// The walk over the animations of one level. A step that would leave an array has no effect.
class FrameConversion
{
public:
    FrameConversion(ObjectSet& set, const ObjectNames& names, Reporter& report)
        : set_(set),
          names_(names),
          report_(report),
          numWords_(static_cast<std::int64_t>(set.Frames.size())),
          stepsLeft_(kSpareSteps + kStepsPerWord * numWords_)
    {
        TakeOwner(0);
    }

    void Run()
    {
        for (std::size_t a = 0; a < set_.Animations.size() && stepsLeft_ > 0; ++a) {
            FindOwner(a);
            if (set_.Game == kTR1)
                Rebuild(a);
            Rescale(a);
        }
        if (stepsLeft_ <= 0) {
            report_.LogLine("ERROR! The animations overlap, not all frames are converted");
            faulty_ = true;
        }
        TellFault();
    }

private:
    const Moveable& Owner() const { return set_.Moveables[owner_]; }

    void TakeOwner(std::size_t owner)
    {
        owner_ = owner;
        next_ = owner + 1;
        while (next_ < set_.Moveables.size() && set_.Moveables[next_].Animation == -1)
            ++next_;
    }

    /// The animations of the moveables follow each other, so the owner moves on when the
    /// animations of the next moveable that has any begin.
    void FindOwner(std::size_t a)
    {
        if (owner_ + 1 == set_.Moveables.size())
            return;
        TellFault();
        if (next_ < set_.Moveables.size() &&
            set_.Moveables[next_].Animation <= static_cast<std::int64_t>(a))
            TakeOwner(next_);
    }

    void TellFault()
    {
        if (faulty_)
            report_.MessageOf("Error converting animations from the ", OwnerName());
        faulty_ = false;
    }

    const std::string& OwnerName() const { return names_.Moveable(kTR1, Owner().ObjectID); }

    std::int64_t FirstWord(std::size_t a) const { return set_.Animations[a].FrameOffset / 2; }

    bool Inside(std::int64_t word) const { return word >= 0 && word < numWords_; }

    std::int16_t& Frame(std::int64_t word) { return set_.Frames[static_cast<std::size_t>(word)]; }

    /// Number of frames; those of the last animation run to the end.
    std::int64_t CountFrames(std::size_t a) const
    {
        const Animation& animation = set_.Animations[a];
        if (a + 1 == set_.Animations.size())
            return RoundedQuotient(numWords_ - FirstWord(a), animation.FrameSize);
        const std::int64_t bytes =
            std::int64_t{set_.Animations[a + 1].FrameOffset} - animation.FrameOffset;
        return RoundedQuotient(bytes, 2 * std::int64_t{animation.FrameSize});
    }

    /// Tomb Raider I: drops the value count of each frame and exchanges the words of each
    /// rotation. The last word of a frame keeps its value.
    void Rebuild(std::size_t a)
    {
        const auto first = FirstWord(a);
        if (Inside(first + kHeaderWords)) {
            const auto values = Frame(first + kHeaderWords);
            const auto size = std::int64_t{values} * 2 + kHeaderWords + 1;
            if (size >= 0 && size <= 0xff)
                set_.Animations[a].FrameSize = static_cast<std::uint8_t>(size);
            if (values != Owner().NumMeshes)
                ReportMismatch(a);
        }
        auto word = first;
        for (auto frames = CountFrames(a); frames > 0 && Spend(word); --frames) {
            word += kHeaderWords + 1;
            for (auto meshes = Owner().NumMeshes; meshes > 0 && Spend(word); --meshes) {
                // The first word of the pair is where it belongs once the second one stands before.
                if (Inside(word - 1) && Inside(word + 1))
                    Frame(word - 1) = Frame(word + 1);
                word += 2;
            }
        }
    }

    void ReportMismatch(std::size_t a)
    {
        const auto number = static_cast<std::int64_t>(a) - Owner().Animation;
        report_.LogLine("ERROR! Error when converting " + OwnerName() + ", animation" +
                        (number >= 0 ? " " : "") + std::to_string(number));
        faulty_ = true;
    }

    /// Makes the 10-bit angles of one-word rotations 12 bits wide.
    void Rescale(std::size_t a)
    {
        const std::int64_t size = set_.Animations[a].FrameSize;
        auto start = FirstWord(a) + kHeaderWords;
        for (auto frames = CountFrames(a); frames > 0 && Spend(start); --frames, start += size) {
            auto word = start;
            if (RescaleInside(word))
                continue;
            for (auto meshes = Owner().NumMeshes; meshes > 0 && Spend(word); --meshes)
                word += Inside(word) ? Widen(Frame(word)) : 2;
        }
    }

    /// Widens a rotation of one word, with `word` its first; gives the number of its words.
    static std::int64_t Widen(std::int16_t& word)
    {
        const auto value = static_cast<std::uint16_t>(word);
        if ((value & kOneWordMask) == 0)
            return 2;
        word = static_cast<std::int16_t>((value & kOneWordMask) + 4 * (value & kAngleMask));
        return 1;
    }

    /// The rotations of one frame, where all of them lie inside the frames for sure, which spares
    /// a look at each word. Gives whether they do.
    bool RescaleInside(std::int64_t word)
    {
        const std::int64_t meshes = Owner().NumMeshes;
        if (meshes <= 0 || word < 0 || word + 2 * meshes > numWords_ || stepsLeft_ <= meshes)
            return false;
        stepsLeft_ -= meshes;
        std::int16_t* at = &Frame(word);
        for (std::int64_t mesh = 0; mesh < meshes; ++mesh)
            at += Widen(*at);
        return true;
    }

    /// Takes one step. None is left to take behind the frames' end, or when the steps are used up.
    bool Spend(std::int64_t word) { return word < numWords_ && --stepsLeft_ > 0; }

    ObjectSet& set_;
    const ObjectNames& names_;
    Reporter& report_;
    std::int64_t numWords_;
    std::int64_t stepsLeft_;
    std::size_t owner_ = 0; ///< the moveable whose animation is worked on
    std::size_t next_ = 0;  ///< the next one with animations
    bool faulty_ = false;   ///< the owner's animations have a fault that was not told yet
};

} // namespace

void ConvertFrames(ObjectSet& set, const ObjectNames& names, Reporter& report)
{
    if (!IsOlderGame(set.Game) || set.Moveables.empty())
        return;
    report.LogLine("Converting frames");
    FrameConversion(set, names, report).Run();
}

} // namespace morlik
