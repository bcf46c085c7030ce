// Any bytes as a primary and a secondary string table file, then lookups of every id that either
// index names and of a spread of others. Each answer is compared with a small model of the file
// format worked out from the same bytes: the load result, the text and whether it was found. The
// first two input bytes tell where the primary file ends and the secondary file begins.
#include <fcntl.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/security/LqCRC16.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
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

// What a table of these bytes must answer, worked out from the file format on its own.
struct Record {
  uint32_t offset[2] = {0xFFFFFFFFu, 0xFFFFFFFFu};
  uint16_t length[2] = {0xFFFF, 0xFFFF};
};

struct Model {
  const uint8_t* bytes[2] = {nullptr, nullptr};
  size_t size[2] = {0, 0};
  bool loaded = false;  // what SetFile answers
  bool open = false;
  std::map<uint16_t, Record> index;

  // -1 broken, 0 empty, otherwise the count of a valid index.
  static int Index(const uint8_t* data, size_t size) {
    if (size < 2) return -1;
    const int count = data[0] << 8 | data[1];
    if (count == 0) return 0;
    const size_t head = 2 + 8 * static_cast<size_t>(count);
    if (size < head + 2) return -1;
    LqCRC16 crc;
    crc.Add(data, static_cast<int>(head));
    return data[head] == (crc.Value() >> 8) && data[head + 1] == (crc.Value() & 0xFF) ? count : -1;
  }

  void Load(int file) {
    const int count = Index(bytes[file], size[file]);
    if (file == 0) {
      loaded = count >= 0;
      open = count > 0;
    }
    for (int i = 0; i < count; ++i) {
      const uint8_t* e = bytes[file] + 2 + 8 * i;
      const auto id = static_cast<uint16_t>(e[0] << 8 | e[1]);
      if (file == 0 && index.count(id)) continue;  // the first primary entry wins
      Record& r = index[id];
      r.offset[file] = static_cast<uint32_t>(e[2]) << 24 | e[3] << 16 | e[4] << 8 | e[5];
      r.length[file] = static_cast<uint16_t>(e[6] << 8 | e[7]);
    }
  }

  bool Read(const Record& r, int file, std::string& text) const {
    if (r.offset[file] == 0xFFFFFFFFu || r.length[file] == 0xFFFF || r.offset[file] > 0x7FFFFFFFu ||
        static_cast<uint64_t>(r.offset[file]) + r.length[file] > size[file])
      return false;
    const char* p = reinterpret_cast<const char*>(bytes[file]) + r.offset[file];
    text.assign(p, strnlen(p, r.length[file]));
    return true;
  }

  bool Expect(unsigned id, std::string& text) const {
    if (open) {
      const auto found = index.find(static_cast<uint16_t>(id));
      if (found != index.end()) {
        if (Read(found->second, 0, text) && text != " ") return true;
        if (Read(found->second, 1, text)) return true;
      }
    }
    LqString fallback;
    StringId2String(id, fallback);
    text = static_cast<const char*>(fallback);
    return false;
  }
};

void Check(const LqStringTableFile& table, const Model& model, unsigned id) {
  LqString text;
  const bool found = table.LoadStringW(text, id);
  std::string expected;
  if (found != model.Expect(id, expected)) std::abort();
  if (std::string(text, static_cast<size_t>(text.Length())) != expected) std::abort();
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

  Model model;
  model.bytes[0] = primary;
  model.size[0] = split;
  model.Load(0);
  if (secondarySize != 0 && model.open) {
    model.bytes[1] = secondary;
    model.size[1] = secondarySize;
    model.Load(1);
  }

  LqStringTableFile table;
  if (table.SetFile(primaryPath.c_str(), secondarySize ? secondaryPath.c_str() : nullptr) !=
      model.loaded)
    std::abort();
  // Every id the two indexes may name, read from where their entries would stand.
  for (const auto& [bytes, length] : {std::pair{primary, split}, {secondary, secondarySize}})
    for (size_t at = 2; at + 2 <= length && at < 2 + 8 * 256; at += 8)
      Check(table, model, static_cast<unsigned>(bytes[at] << 8 | bytes[at + 1]));
  for (unsigned id : {0u, 1u, 5u, 255u, 4096u, 65535u, 65536u, 65541u, 0xFFFFFFFFu})
    Check(table, model, id);
  return 0;
}
