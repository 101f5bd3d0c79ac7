#include "platform/Platform.h"
#include "shell/window/RunWindow.h"

int main(int argc, char** argv)
{
    morlik::TakeFaultsAsErrors();
    return morlik::RunProgram(argc, argv);
}
