#include "shell/window/RunWindow.h"

int main(int argc, char** argv)
{
    return morlik::RunProgram(argc, argv);
}
