#pragma once

#include "base/Reporter.h"
#include "convert/ConvertLevel.h"
#include "set/Wad.h"

#include <string>

namespace morlik
{

/// The status of a save: which text and which percentage belong to which stage of the conversion
/// and to which block of the files.
class SaveStatus : public WadProgress
{
public:
    explicit SaveStatus(Reporter& report) : report_(report) {}

    void Begin(ConvertStage stage);
    /// A stage of its own.
    void Stage(const std::string& event, float percent);
    /// A percentage and a turn for the window system. `Interrupted` where the user asked to stop.
    void Prog(float percent);
    /// The text at rest.
    void Rest();

    // Tiles, from 30 to 55 percent.
    void Begin() override;
    void Step(std::int32_t step) override;
    void End() override;
    void Written(WadBlock block) override;

private:
    Host& TheHost() const { return report_.TheHost(); }

    Reporter& report_;
    Phase before_ = Phase::Convert; ///< that the tiles interrupt
};

} // namespace morlik
