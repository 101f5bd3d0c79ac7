#pragma once

#include <QIcon>

namespace morlik
{

/// Pictures of the toolbar, 16 by 16 at their natural size.
enum class ToolPicture
{
    Open,
    Save,
    Moveables,
    Statics,
    Sprites,
};

/// The program's own picture, a crate, for window and task bar.
QIcon ProgramIcon();

/// Draws a picture at 16, 32 and 48 pixels, so that it is crisp on screens of any density.
QIcon ToolIcon(ToolPicture picture);

} // namespace morlik
