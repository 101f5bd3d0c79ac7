#include "cli/ProgressBar.h"

#include "base/Text.h"
#include "cli/Columns.h"

#include <algorithm>
#include <utility>

namespace morlik::cli
{

ProgressBar::ProgressBar(const Streams& streams, const std::vector<std::string>& names)
    : streams_(streams), names_(names), percents_(names.size(), -1)
{
}

ProgressBar::~ProgressBar()
{
    Wipe();
}

void ProgressBar::Set(std::size_t work, float percent)
{
    const std::lock_guard lock(mutex_);
    if (percents_[work] < 0)
        last_ = work;
    // A save goes back to 0 at its end.
    percents_[work] = std::clamp(percent, percents_[work], 100.0F);
    Draw();
}

std::string ProgressBar::Line() const
{
    constexpr std::size_t kLeastBar = 10;
    constexpr std::size_t kMostBar = 40;
    constexpr std::size_t kLeastName = 6; // what is shorter tells nothing
    const std::string gap = "  ";
    float sum = 0;
    for (const float percent : percents_)
        sum += std::max(percent, 0.0F);
    const auto all = percents_.size();
    const auto percent = static_cast<std::size_t>(sum / static_cast<float>(all));
    const auto done = std::ranges::count(percents_, 100.0F);
    if (std::cmp_equal(done, all))
        return {}; // there is nothing left to show
    std::string tail = "] " + std::to_string(percent) + " %";
    if (all > 1)
        tail += gap + std::to_string(done) + " of " + std::to_string(all);
    // The last column stays free: some terminals go to the next line behind it.
    const std::size_t columns = std::max<std::size_t>(streams_.Columns, 1) - 1;
    const std::string name = Printable(FileTitle(names_[last_]));
    const std::size_t room = columns - std::min(columns, 1 + tail.size());
    const std::size_t bar = std::clamp(room - std::min(room, gap.size() + Width(name)),
                                       std::min(room, kLeastBar), kMostBar);
    const std::size_t full = percent * bar / 100;
    std::string line = "[" + std::string(full, '#') + std::string(bar - full, ' ') + tail;
    const std::size_t left = room - bar;
    if (left >= gap.size() + std::min(kLeastName, Width(name)))
        line += gap + LastColumns(name, left - gap.size());
    return line.substr(0, Width(line) > columns ? columns : line.size());
}

void ProgressBar::Draw()
{
    if (!streams_.IsTerminal)
        return;
    const std::string line = Line();
    if (line == shown_ || line.empty())
        return;
    const std::size_t before = Width(shown_);
    const std::size_t now = Width(line);
    streams_.Errors << '\r' << line << std::string(before - std::min(before, now), ' ')
                    << std::flush;
    shown_ = line;
}

void ProgressBar::Wipe()
{
    if (!shown_.empty())
        streams_.Errors << '\r' << std::string(Width(shown_), ' ') << '\r' << std::flush;
    shown_.clear();
}

} // namespace morlik::cli
