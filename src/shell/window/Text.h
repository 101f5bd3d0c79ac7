#pragma once

#include "base/Text.h"

#include <QString>
#include <string>

namespace morlik
{

/// A text to show: a message, a caption, an entry of a list, a tool tip. It may hold a name of the
/// formats, which is 8-bit and Western, or a path, which is UTF-8 but for odd ones. Nothing tells
/// which, but a Western letter beyond ASCII is hardly ever followed by what UTF-8 asks for: what is
/// valid UTF-8 is taken as such, all else as Western.
inline QString FromText(const std::string& text)
{
    const QUtf8StringView utf8(text.data(), static_cast<qsizetype>(text.size()));
    return utf8.isValidUtf8() ? utf8.toString() : QString::fromLatin1(QByteArrayView(text));
}

/// A name for the formats; characters that they lack become "?".
inline std::string ToText(const QString& text)
{
    return text.toLatin1().toStdString();
}

/// Names of files for the toolkit and from it.
inline QString FromPathText(const std::string& path)
{
    return QString::fromStdString(path);
}
inline std::string ToPathText(const QString& path)
{
    return path.toStdString();
}

} // namespace morlik
