#pragma once

#include <nlohmann/json.hpp>
#include <ostream>

namespace morlik::cli
{

using Json = nlohmann::ordered_json;

/// Prints a description, laid out for people too. Of its texts, which may come from files, all
/// control characters are escaped, and bytes that are no UTF-8 become its mark for such.
void PrintJson(const Json& description, std::ostream& out);
/// The same in one line.
void PrintJsonLine(const Json& description, std::ostream& out);

} // namespace morlik::cli
