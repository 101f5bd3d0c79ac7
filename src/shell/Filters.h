#pragma once

namespace morlik
{

/// Filter of the open dialog for everything that can be opened, and the one for `main.sfx` alone.
inline constexpr const char* kOpenFilter =
    "TR Levels|*.phd;*.tub;*.tr2;*.tr4;*.trc|PRJ Files|*.prj|TR2&3 Sound Data (main.sfx)|main.sfx";
inline constexpr const char* kMainSFXFilter = "TR2&3 Sound Data (main.sfx)|main.sfx";

/// Filter of the save dialog while no command uses it.
inline constexpr const char* kSaveFilterAtRest = "WAD Objects(*.morbun)|*.morbun";

} // namespace morlik
