#pragma once

#include "base/Registry.h"
#include "base/Reporter.h"

#include <string>

namespace morlik
{

/// A thin layer over the registry that names a key by one text, root and path together, such as
/// "HKEY_LOCAL_MACHINE\software\Torvand", and knows two types of values. Both hold one byte for
/// each character, without a terminator.

/// The roots that the settings stand below, by the numbers of the system.
inline constexpr RootKey kCurrentUser = 0x80000001;
inline constexpr RootKey kLocalMachine = 0x80000002;

/// Result of a read that failed.
inline constexpr const char* kRegError = "Err";

/// Splits `key` in place: its root goes to `root`, the path below it stays in `key`. A text that
/// doesn't begin with "HKEY_", or that ends in a backslash, gets a message and both stay as they
/// are.
void SplitKeyPath(std::string& key, RootKey& root, Reporter& report);

/// The root of that name, in capitals; 0 where there is none.
RootKey RootKeyFromName(const std::string& name);

/// With a root that is not known all of these do nothing, and the reads give an empty text.

/// Creates the key with what is missing above it. A failure is not told.
void RegCreateKey(Registry& registry, std::string key, Reporter& report);

/// Stores `data` as a binary value of an existing key; a failure gets a message.
void RegWriteBinary(Registry& registry, std::string key, const std::string& name,
                    const std::string& data, Reporter& report);

/// Stores `data` as a text value of an existing key. A failure is not told.
void RegWriteText(Registry& registry, std::string key, const std::string& name,
                  const std::string& data, Reporter& report);

/// The stored bytes whole, whatever the type; a terminator that the store counts stays at the end.
/// `kRegError` where there is no such value.
std::string RegReadValue(Registry& registry, std::string key, const std::string& name,
                         Reporter& report);

/// A text of fewer than 255 characters as other programs store it, with its terminator counted:
/// the stored bytes without blanks at both ends, then without their last character.
/// `kRegError` where there is no such value or it is too long.
std::string RegReadText(Registry& registry, std::string key, const std::string& name,
                        Reporter& report);

} // namespace morlik
