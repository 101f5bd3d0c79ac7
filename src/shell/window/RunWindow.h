#pragma once

namespace morlik
{

/// The whole program: the batch job where the command line asks for it, else the window.
/// Gives the exit status: 0 for a good end.
int RunProgram(int argc, char** argv);

} // namespace morlik
