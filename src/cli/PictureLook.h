#pragma once

#include "cli/Commands.h"
#include "picture/Render.h"

#include <optional>

namespace morlik::cli
{

/// How a picture is to look by its options; nothing after a complaint.
std::optional<RenderOptions> LookOf(const PictureOptions& options, const Streams& streams);

/// The camera of a picture, before it is framed.
Camera CameraOf(const PictureOptions& options);

} // namespace morlik::cli
