// jet/pages/io_error.h — the words of disk errors, the same on every system.
#pragma once

#include "jet/error.h"

#include <filesystem>
#include <string>

namespace jet {

enum class IoAction { Open, Read, Write, Truncate, Sync, Lock, Remove, Rename, Folder };

// Throws Error(number) for `path`. `reason` is what the system said; may be empty.
[[noreturn]] void throwIoError(Err number, IoAction action, const std::filesystem::path& path,
                               const std::string& reason);

std::string pathText(const std::filesystem::path& path); // UTF-8

} // namespace jet
