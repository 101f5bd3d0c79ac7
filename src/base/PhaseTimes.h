#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace morlik
{

/// What the time of a conversion goes into. What is none of the others is `Convert`.
enum class Phase : std::uint8_t
{
    Convert,
    Read,
    Inflate,
    Tiles,
    Write,
};
constexpr std::size_t kNumPhases = 5;

/// A stopwatch that always runs for one phase. It costs a look at the clock for each change.
class PhaseTimes
{
public:
    /// Lets the time from now on count for `phase`; gives the phase before.
    Phase Change(Phase phase)
    {
        const auto now = std::chrono::steady_clock::now();
        times_[static_cast<std::size_t>(phase_)] += now - since_;
        since_ = now;
        const Phase before = phase_;
        phase_ = phase;
        return before;
    }

    double Milliseconds(Phase phase) const
    {
        return std::chrono::duration<double, std::milli>(times_[static_cast<std::size_t>(phase)])
            .count();
    }

private:
    std::array<std::chrono::steady_clock::duration, kNumPhases> times_{};
    std::chrono::steady_clock::time_point since_ = std::chrono::steady_clock::now();
    Phase phase_ = Phase::Convert;
};

/// A stretch of work that counts for a phase; behind it the phase before goes on.
class PhaseScope
{
public:
    PhaseScope(PhaseTimes& times, Phase phase) : times_(times), before_(times.Change(phase)) {}
    PhaseScope(const PhaseScope&) = delete;
    PhaseScope& operator=(const PhaseScope&) = delete;
    ~PhaseScope() { times_.Change(before_); }

private:
    PhaseTimes& times_;
    Phase before_;
};

} // namespace morlik
