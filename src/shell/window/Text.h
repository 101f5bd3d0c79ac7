#pragma once

#include "base/Text.h"

#include <QString>
#include <string>

namespace morlik
{

/// Text of the formats is 8-bit and Western; characters that it lacks become "?".
inline QString FromText(const std::string& text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string ToText(const QString& text)
{
    return text.toLatin1().toStdString();
}

/// Paths, and messages, which may hold one.
inline QString FromPathText(const std::string& path)
{
    return QString::fromStdString(path);
}
inline std::string ToPathText(const QString& path)
{
    return path.toStdString();
}

} // namespace morlik
