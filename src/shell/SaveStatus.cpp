#include "shell/SaveStatus.h"

namespace morlik
{

void SaveStatus::Begin(ConvertStage stage)
{
    switch (stage) {
    case ConvertStage::Meshes:
        TheHost().SetEvent("Converting meshes");
        TheHost().SetProg(2);
        break;
    case ConvertStage::Tiles:
        TheHost().SetProg(10);
        break;
    case ConvertStage::Palette:
        TheHost().SetProg(12);
        break;
    case ConvertStage::Frames:
        Stage("Converting frames", 15);
        break;
    case ConvertStage::Dispatches:
        Stage("Fixing AnimDispatches", 20);
        break;
    case ConvertStage::Textures:
        Stage("Writing WAD", 25);
        break;
    case ConvertStage::Objects:
        Prog(30);
        TheHost().SetEvent("Converting textures");
        break;
    }
}

void SaveStatus::Stage(const std::string& event, float percent)
{
    TheHost().SetEvent(event);
    Prog(percent);
}

void SaveStatus::Prog(float percent)
{
    TheHost().SetProg(percent);
    TheHost().GiveTurn();
    if (TheHost().StopRequested())
        throw Interrupted();
}

void SaveStatus::Rest()
{
    TheHost().SetEvent("Ready.");
}

void SaveStatus::Begin()
{
    before_ = report_.Times.Change(Phase::Tiles);
    report_.LogLine("Converting texture tiles");
}

void SaveStatus::Step(std::int32_t step)
{
    Prog(30 + static_cast<float>(step) / 10.2F);
}

void SaveStatus::End()
{
    report_.Times.Change(before_);
}

void SaveStatus::Written(WadBlock block)
{
    switch (block) {
    case WadBlock::Textures:
    case WadBlock::StaticMeshes:
        break;
    case WadBlock::Tiles:
        Stage("Writing WAD", 55);
        break;
    case WadBlock::MeshPointers:
        Prog(57);
        break;
    case WadBlock::MeshData:
        Prog(60);
        break;
    case WadBlock::Animations:
        Prog(62);
        break;
    case WadBlock::StateChanges:
        Prog(65);
        break;
    case WadBlock::Dispatches:
        Prog(67);
        break;
    case WadBlock::Commands:
        Prog(70);
        break;
    case WadBlock::MeshTrees:
        Prog(72);
        break;
    case WadBlock::Frames:
        Prog(75);
        break;
    case WadBlock::Moveables:
        Prog(77);
        break;
    }
}

} // namespace morlik
