#include "lqtools/localisation/LqStringTableFile.h"

#include <cstring>
#include <vector>

#include "lqtools/localisation/detail/TableFileIo.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/security/LqCRC16.h"
#include "lqtools/text/Unicode.h"

namespace {

constexpr uint32_t kNoOffset = 0xFFFFFFFFu;
constexpr uint16_t kNoLength = 0xFFFF;
// Positions are handed to the system as the signed 32-bit offsets of the file format's origin:
// anything above this one cannot be reached.
constexpr uint32_t kLastReachable = 0x7FFFFFFFu;

struct IndexEntry {
  uint16_t id;
  uint32_t offset;
  uint16_t length;
};

IndexEntry DecodeEntry(const unsigned char* p) {
  IndexEntry entry;
  entry.id = static_cast<uint16_t>(p[0] << 8 | p[1]);
  entry.offset = static_cast<uint32_t>(p[2]) << 24 | static_cast<uint32_t>(p[3]) << 16 |
                 static_cast<uint32_t>(p[4]) << 8 | p[5];
  entry.length = static_cast<uint16_t>(p[6] << 8 | p[7]);
  return entry;
}

enum class IndexRead { Empty, Valid, Broken };

// Reads the count, the entries and the checksum from the current position. The whole index is
// read and checked before the caller makes a single record of it, so a damaged or short file
// costs no more memory than its count can justify (at most 65535 entries of 8 bytes).
IndexRead ReadIndex(int handle, std::vector<unsigned char>& entries, int& count) {
  unsigned char head[2];
  if (lq::detail::ReadBlock(handle, head, 2) != 2) return IndexRead::Broken;
  count = head[0] << 8 | head[1];
  if (count == 0) return IndexRead::Empty;
  entries.resize(static_cast<std::size_t>(count) * 8 + 2);
  if (lq::detail::ReadBlock(handle, entries.data(), entries.size()) != entries.size())
    return IndexRead::Broken;
  LqCRC16 crc;
  crc.Add(head, 2);
  crc.Add(entries.data(), count * 8);
  const unsigned char* trailer = entries.data() + static_cast<std::size_t>(count) * 8;
  const int value = crc.Value();
  if (trailer[0] != (value >> 8) || trailer[1] != (value & 0xFF)) return IndexRead::Broken;
  return IndexRead::Valid;
}

LqStringTableFile& ProcessTable() {
  static LqStringTableFile table;
  return table;
}

// Built with the library, so that it exists before any host code runs.
[[maybe_unused]] const LqStringTableFile& g_processTable = ProcessTable();

}  // namespace

LqStringTableFile::LqStringTableFile() = default;

LqStringTableFile::~LqStringTableFile() { Close(); }

void LqStringTableFile::Close() {
  lq::detail::CloseTableFile(m_primary.exchange(-1));
  lq::detail::CloseTableFile(m_secondary);
  m_secondary = -1;
  m_index.clear();
}

bool LqStringTableFile::SetFile(const char* primary, const char* secondary) {
  std::lock_guard<std::recursive_mutex> guard(m_lock);
  Close();

  const int primaryHandle = lq::detail::OpenTableFile(primary);
  if (primaryHandle == -1) return false;
  std::vector<unsigned char> entries;
  int count = 0;
  switch (ReadIndex(primaryHandle, entries, count)) {
    case IndexRead::Empty:
      // Kept: an empty table is a success that leaves the object closed.
      lq::detail::CloseTableFile(primaryHandle);
      return true;
    case IndexRead::Broken: lq::detail::CloseTableFile(primaryHandle); return false;
    case IndexRead::Valid: break;
  }
  for (int i = 0; i < count; ++i) {
    const IndexEntry entry = DecodeEntry(entries.data() + static_cast<std::size_t>(i) * 8);
    tagStringInfo info;
    info.primaryOffset = entry.offset;
    info.primaryLength = entry.length;
    m_index.emplace(entry.id, info);  // the first entry of an id wins
  }
  m_primary.store(primaryHandle);

  if (!secondary || std::strcmp(primary, secondary) == 0) return true;
  m_secondary = lq::detail::OpenTableFile(secondary);
  if (m_secondary == -1) return true;
  switch (ReadIndex(m_secondary, entries, count)) {
    case IndexRead::Empty: return true;  // the handle stays open, serving nothing
    case IndexRead::Broken:
      lq::detail::CloseTableFile(m_secondary);
      m_secondary = -1;
      return true;
    case IndexRead::Valid: break;
  }
  for (int i = 0; i < count; ++i) {
    const IndexEntry entry = DecodeEntry(entries.data() + static_cast<std::size_t>(i) * 8);
    tagStringInfo& info = m_index[entry.id];  // a new record is all ones
    info.secondaryOffset = entry.offset;      // the last entry of an id wins
    info.secondaryLength = entry.length;
  }
  return true;
}

bool LqStringTableFile::ReadText(int handle, uint32_t offset, uint16_t length, LqString& text) {
  if (handle == -1 || offset == kNoOffset || length == kNoLength || offset > kLastReachable)
    return false;
  char* buffer = text.Prepare(length, false);
  if (lq::detail::ReadBlockAt(handle, buffer, length, offset) != length) return false;
  const std::size_t used = strnlen(buffer, length);
  if (used < length) text.Assign(buffer, static_cast<int>(used));  // a stored NUL ends the text
  return true;
}

bool LqStringTableFile::LoadStringW(LqString& text, unsigned int id) const {
  // A closed table answers without waiting for the lock.
  if (m_primary.load(std::memory_order_relaxed) == -1) return InvalidString(text, id);
  std::lock_guard<std::recursive_mutex> guard(m_lock);
  const int primary = m_primary.load(std::memory_order_relaxed);
  if (primary == -1) return InvalidString(text, id);  // closed while this thread waited

  const auto found = m_index.find(static_cast<uint16_t>(id));
  if (found == m_index.end()) return InvalidString(text, id);
  const tagStringInfo& info = found->second;
  if (!ReadText(primary, info.primaryOffset, info.primaryLength, text))
    return LoadStringSecondary(text, id, &info);
  // One blank marks a text that this language file leaves untranslated.
  if (text.Length() == 1 && text[0] == ' ') return LoadStringSecondary(text, id, &info);
  return true;
}

bool LqStringTableFile::LoadStringW(LqWString& text, unsigned int id) const {
  LqString narrow;
  const bool found = LoadStringW(narrow, id);
  Utf8ToUtf16(text, narrow);
  return found;
}

bool LqStringTableFile::LoadStringSecondary(LqString& text, unsigned int id,
                                            const tagStringInfo* info) const {
  // No blank test here: a blank in the secondary file is delivered as it stands.
  if (ReadText(m_secondary, info->secondaryOffset, info->secondaryLength, text)) return true;
  return InvalidString(text, id);
}

bool LqStringTableFile::InvalidString(LqString& text, unsigned int id) const {
  StringId2String(id, text);
  return false;
}

bool LqStringTableFile::InvalidString(LqWString& text, unsigned int id) const {
  char16_t buffer[128];
  lq::detail::swprintf(buffer, 128, u"IDS_05%d", static_cast<int>(id));
  text = buffer;
  return false;
}

// ------------------------------------------------------------------------------------------
// The process-wide table

bool SetLqLoadStringTableFile(const char* primary, const char* secondary) {
  return ProcessTable().SetFile(primary, secondary);
}

LqWString LqLoadString(unsigned int id) {
  LqWString text;
  ProcessTable().LoadStringW(text, id);
  return text;
}

LqString& LqLoadString(unsigned int id, LqString& text) {
  ProcessTable().LoadStringW(text, id);
  return text;
}

LqWString& LqLoadString(unsigned int id, LqWString& text) {
  ProcessTable().LoadStringW(text, id);
  return text;
}

// ------------------------------------------------------------------------------------------
// Id symbols

LqString& StringId2String(unsigned int id, LqString& text) {
  char buffer[16];
  lq::detail::snprintf(buffer, sizeof buffer, "IDS_%05d", static_cast<int>(id));
  text = buffer;
  return text;
}

LqWString& StringId2String(unsigned int id, LqWString& text) {
  char16_t buffer[16];
  lq::detail::swprintf(buffer, 16, u"IDS_%05d", static_cast<int>(id));
  text = buffer;
  return text;
}

char* StringId2String(unsigned int id, char* buffer) {
  if (buffer) lq::detail::snprintf(buffer, 16, "IDS_%05d", static_cast<int>(id));
  return buffer;
}

char16_t* StringId2String(unsigned int id, char16_t* buffer, int capacity) {
  if (buffer && capacity > 0)
    lq::detail::swprintf(buffer, static_cast<std::size_t>(capacity), u"IDS_%05d",
                         static_cast<int>(id));
  return buffer;
}
