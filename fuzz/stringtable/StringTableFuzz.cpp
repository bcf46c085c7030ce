// Any bytes as a primary and a secondary string table file, then lookups of every id that either
// index names and of a spread of others. A lookup gives a stored text of at most 65534 bytes with
// true, or exactly the fallback with false. The first two input bytes tell where the primary file
// ends and the secondary file begins.
#include <fcntl.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const std::string& Folder() {
  static const std::string folder = [] {
    char pattern[] = "/tmp/lqtools-fuzz-XXXXXX";
    const std::string made = mkdtemp(pattern);
    return made;
  }();
  return folder;
}

void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
  const int handle = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (handle == -1) std::abort();
  if (size != 0 && ::write(handle, data, size) != static_cast<ssize_t>(size)) std::abort();
  ::close(handle);
}

void Check(const LqStringTableFile& table, unsigned id) {
  LqString text;
  const bool found = table.LoadStringW(text, id);
  if (found) {
    if (text.Length() > 65534) std::abort();
  } else {
    LqString fallback;
    StringId2String(id, fallback);
    if (!(text == fallback)) std::abort();
  }
  LqWString wide;
  if (table.LoadStringW(wide, id) != found) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2 || size > (1u << 20)) return 0;
  const size_t split = std::min<size_t>(size - 2, data[0] << 8 | data[1]);
  const uint8_t* primary = data + 2;
  const uint8_t* secondary = primary + split;
  const size_t secondarySize = size - 2 - split;
  const std::string primaryPath = Folder() + "/primary";
  const std::string secondaryPath = Folder() + "/secondary";
  WriteFile(primaryPath, primary, split);
  WriteFile(secondaryPath, secondary, secondarySize);

  LqStringTableFile table;
  table.SetFile(primaryPath.c_str(), secondarySize ? secondaryPath.c_str() : nullptr);
  // Every id the two indexes may name, read from where their entries would stand.
  for (const auto& [bytes, length] : {std::pair{primary, split}, {secondary, secondarySize}})
    for (size_t at = 2; at + 2 <= length && at < 2 + 8 * 256; at += 8)
      Check(table, static_cast<unsigned>(bytes[at] << 8 | bytes[at + 1]));
  for (unsigned id : {0u, 1u, 5u, 255u, 4096u, 65535u, 65536u, 65541u, 0xFFFFFFFFu})
    Check(table, id);
  return 0;
}
