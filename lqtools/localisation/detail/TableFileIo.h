// The low-level file calls of the string table reader and writer: open a narrow path read-only
// (a '\' in the path becomes '/', as at every path boundary of lqtools), read a whole block and
// read a block at a position without moving a shared file position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace lq::detail {

std::string TablePath(const char* path);
// A read-only descriptor closed on exec, or -1.
int OpenTableFile(const char* path);
void CloseTableFile(int handle);
// Reads up to `size` bytes from the current position, retrying short reads; the bytes read.
std::size_t ReadBlock(int handle, void* buffer, std::size_t size);
// The same at `offset`, leaving the file position alone, so that lookups of several threads
// never disturb each other's position.
std::size_t ReadBlockAt(int handle, void* buffer, std::size_t size, uint64_t offset);

}  // namespace lq::detail
