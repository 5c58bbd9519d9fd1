#pragma once

#include <cstdint>

/// Puts this process behind walls that it cannot leave any more: it may use the descriptors that it has,
/// reading from all and writing to standard output alone, and memory up to `mostMemory` bytes, and nothing
/// else of the system: no file, no network, no process, its own settings neither. False where the kernel
/// knows no such walls; then only the limits of memory, time and files hold.
bool raiseWalls(std::uint64_t mostMemory);
