#include "cli/ProgressBar.h"

#include <algorithm>
#include <numeric>

namespace morlik::cli
{

namespace
{

constexpr int kBarWidth = 40;

} // namespace

ProgressBar::ProgressBar(const Streams& streams, std::size_t works)
    : streams_(streams), percents_(works)
{
}

ProgressBar::~ProgressBar()
{
    Wipe();
}

void ProgressBar::Set(std::size_t work, float percent)
{
    const std::lock_guard lock(mutex_);
    // A save goes back to 0 at its end.
    percents_[work] = std::clamp(percent, percents_[work], 100.0F);
    Draw();
}

void ProgressBar::Draw()
{
    if (!streams_.IsTerminal)
        return;
    const auto sum = std::accumulate(percents_.begin(), percents_.end(), 0.0F);
    const int percent = static_cast<int>(sum / static_cast<float>(percents_.size()));
    if (percent == shown_ || percent >= 100) // at the end there is nothing left to show
        return;
    shown_ = percent;
    const auto full = static_cast<std::size_t>(percent * kBarWidth / 100);
    streams_.Errors << "\r[" << std::string(full, '#') << std::string(kBarWidth - full, ' ') << "] "
                    << percent << " %" << std::flush;
}

void ProgressBar::Wipe()
{
    if (shown_ >= 0)
        streams_.Errors << '\r' << std::string(kBarWidth + 8, ' ') << '\r' << std::flush;
    shown_ = -1;
}

} // namespace morlik::cli
