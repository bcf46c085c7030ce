#include "lqtools/datetime/LqTimeZone.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "lqtools/files/FileOperations.h"
#include "lqtools/files/LqFileFind.h"
#include "lqtools/files/PathHelpers.h"

namespace {

// Where the first data block of a zone file keeps what is read of it.
constexpr int64_t kCountAt = 32;
constexpr int64_t kTransitionsAt = 44;
constexpr int64_t kTypeRecordSize = 6;
// Offsets within a day keep the arithmetic of a local lookup away from 32-bit overflow.
constexpr int32_t kSafeOffset = 1 << 17;

// The bytes of a zone file that a load can reach, read once. A read beyond the end of the file
// gives nothing, as the system's read at the end of a file does.
class ZoneFileBytes {
 public:
  bool Read(int descriptor, int64_t size, int64_t wanted) {
    m_bytes.resize(static_cast<std::size_t>(std::min(size, wanted)));
    std::size_t done = 0;
    while (done < m_bytes.size()) {
      const ssize_t got =
          pread(descriptor, m_bytes.data() + done, m_bytes.size() - done, static_cast<off_t>(done));
      if (got < 0) return false;
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    m_bytes.resize(done);
    return true;
  }
  int64_t Size() const { return static_cast<int64_t>(m_bytes.size()); }
  // Four bytes big-endian; bytes beyond the end keep the zero of a fresh entry.
  int32_t BigEndian32(int64_t at) const {
    uint32_t value = 0;
    for (int64_t i = 0; i < 4; ++i)
      value = value << 8 | Byte(at + i);
    return static_cast<int32_t>(value);
  }
  unsigned char Byte(int64_t at) const {
    return at >= 0 && at < Size() ? m_bytes[static_cast<std::size_t>(at)] : 0;
  }

 private:
  std::vector<unsigned char> m_bytes;
};

// Signed 32-bit subtraction as the processor does it.
int32_t WrappingDifference(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

}  // namespace

LqTimeZone LqTimeZone::m_instance;
LqTimeZone LqTimeZone::m_alt_instance;

LqWString GetTimeZonePath() {
  LqWString path = GetAppPath();
  path += u"zoneinfo/";
  return path;
}

LqTimeZone::LqTimeZone() { Reset(); }

LqTimeZone::LqTimeZone(const LqWString& name) { Set(name); }

LqTimeZone::LqTimeZone(const LqTimeZone& other) : m_name(other.m_name) { CopyTables(other); }

LqTimeZone& LqTimeZone::operator=(const LqTimeZone& other) {
  if (this != &other) {
    Release();
    m_name = other.m_name;
    CopyTables(other);
  }
  return *this;
}

LqTimeZone::~LqTimeZone() { Release(); }

void LqTimeZone::Release() {
  delete[] m_transitions;
  delete[] m_offsets;
  delete[] m_isDst;
  m_transitions = nullptr;
  m_offsets = nullptr;
  m_isDst = nullptr;
}

// Copies own copies of the tables, so that a copy may outlive its source.
void LqTimeZone::CopyTables(const LqTimeZone& other) {
  m_count = other.m_count;
  m_utcOrdered = other.m_utcOrdered;
  m_localOrdered = other.m_localOrdered;
  if (!other.m_transitions) return;
  const std::size_t count = static_cast<std::size_t>(m_count);
  m_transitions = new int32_t[count];
  m_offsets = new int32_t[count];
  m_isDst = new unsigned char[count];
  std::copy(other.m_transitions, other.m_transitions + count, m_transitions);
  std::copy(other.m_offsets, other.m_offsets + count, m_offsets);
  std::copy(other.m_isDst, other.m_isDst + count, m_isDst);
}

void LqTimeZone::Reset() {
  m_name = u"";
  m_count = -1;
  m_utcOrdered = false;
  m_localOrdered = false;
  Release();
}

void LqTimeZone::Set(const LqWString& name) {
  // The loaded zone stands, also when its file changed on disk since: repeated explicit
  // conversions to one zone read no file.
  if (name == m_name) return;
  Reset();
  if (name.IsEmpty()) return;
  m_name = name;

  LqWString path = GetTimeZonePath();
  path += name;
  const int descriptor = wideopen(path, 0, 0);
  if (descriptor < 0) {
    Reset();
    return;
  }

  // Only a regular file is read: a folder (or a device) named like a zone loads nothing.
  struct stat status {};
  bool loaded = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  ZoneFileBytes file;
  int64_t count = 0;
  if (loaded) loaded = file.Read(descriptor, status.st_size, kTransitionsAt);
  // A file too short to hold its count of transitions is no zone.
  if (loaded) loaded = file.Size() >= kCountAt + 4;
  if (loaded) {
    count = file.BigEndian32(kCountAt);
    // A count the file cannot hold (each transition takes five bytes) is refused rather than
    // allocated: no well-formed file has one, and a short file must not cost gigabytes.
    loaded = count >= 0 && (count == 0 || kTransitionsAt + 5 * count <= status.st_size);
  }
  const int64_t typesAt = kTransitionsAt + 4 * count;
  // The type records that an index of -128 to 127 can reach.
  if (loaded)
    loaded = file.Read(descriptor, status.st_size,
                       typesAt + count + 128 * kTypeRecordSize + kTypeRecordSize);
  if (loaded) {
    m_count = static_cast<int32_t>(count);
    m_transitions = new int32_t[static_cast<std::size_t>(count)]();
    m_offsets = new int32_t[static_cast<std::size_t>(count)]();
    m_isDst = new unsigned char[static_cast<std::size_t>(count)]();
    for (int64_t i = 0; i < count; ++i)
      m_transitions[i] = file.BigEndian32(kTransitionsAt + 4 * i);
    for (int64_t i = 0; i < count && loaded; ++i) {
      const auto type = static_cast<signed char>(file.Byte(typesAt + i));
      const int64_t recordAt = typesAt + count + type * kTypeRecordSize;
      // A record before the start of the file fails the load; one past its end reads nothing.
      if (recordAt < 0) {
        loaded = false;
        break;
      }
      m_offsets[i] = file.BigEndian32(recordAt);
      m_isDst[i] = file.Byte(recordAt + 4);
    }
  }
  close(descriptor);
  if (!loaded) {
    Reset();
    return;
  }

  m_utcOrdered = true;
  m_localOrdered = true;
  for (int32_t i = 1; i < m_count; ++i) {
    if (m_offsets[i] > kSafeOffset || m_offsets[i] < -kSafeOffset) m_localOrdered = false;
    if (i < 2) continue;
    if (m_transitions[i] < m_transitions[i - 1]) m_utcOrdered = false;
    if (int64_t{m_transitions[i]} + m_offsets[i] < int64_t{m_transitions[i - 1]} + m_offsets[i - 1])
      m_localOrdered = false;
  }
}

// The documented lookup is a walk from the second transition on that stops at the first one
// lying after `e` (for a local reading, after `e` less that transition's offset); element 0 is
// never compared. Tables in the order the walk implies are searched by halves, with the same
// answer; any other table is walked.
int32_t LqTimeZone::TransitionInForce(int32_t e, bool dateIsUtc) const {
  const int32_t* first = m_transitions + 1;
  const int32_t* last = m_transitions + m_count;
  if (dateIsUtc && m_utcOrdered)
    return static_cast<int32_t>(std::upper_bound(first, last, e) - first);
  if (!dateIsUtc && m_localOrdered && e > INT32_MIN + kSafeOffset && e < INT32_MAX - kSafeOffset) {
    int32_t low = 1;
    int32_t high = m_count;
    while (low < high) {
      const int32_t middle = low + (high - low) / 2;
      if (int64_t{m_transitions[middle]} + m_offsets[middle] > e)
        high = middle;
      else
        low = middle + 1;
    }
    return low - 1;
  }
  int32_t k = 1;
  for (int32_t i = 1; i < m_count; ++i) {
    const int32_t o = dateIsUtc ? 0 : m_offsets[i];
    if (m_transitions[i] > WrappingDifference(e, o)) break;
    ++k;
  }
  return k - 1;
}

int LqTimeZone::CalculateOffsetWindows(const LqDateTime& date, bool dateIsUtc, int mode) {
  // Kept: a zone without transitions gives 0 whatever its file's local time type says; hosts
  // with fixed-offset zone files depend on reading them as UTC.
  if (m_count < 1) return 0;
  if (dateIsUtc) mode = 0;
  const int32_t inForce = TransitionInForce(date.EpochSeconds(), dateIsUtc);
  if (mode != 0 && inForce >= 1) {
    const bool current = m_isDst[inForce] != 0;
    const bool previous = m_isDst[inForce - 1] != 0;
    if (mode == 1 && !current && previous) return m_offsets[inForce - 1];
    if (mode == 2 && current && !previous) return m_offsets[inForce - 1];
  }
  return m_offsets[inForce];
}

int LqTimeZone::Offset(const LqDateTime& date, bool dateIsUtc, int mode) {
  return CalculateOffsetWindows(date, dateIsUtc, mode);
}

bool LqTimeZone::Dst(const LqDateTime& date) {
  if (m_count < 1) return false;
  return m_isDst[TransitionInForce(date.EpochSeconds(), true)] != 0;
}

bool LqTimeZone::GetSupportedOlsonTimeZones(std::vector<LqWString>& out) {
  LqWString pattern = GetTimeZonePath();
  pattern += u"*.*";
  LqFileFind folders;
  if (!folders.FindFile(pattern)) return false;
  for (bool more = true; more;) {
    more = folders.FindNextFileW() != 0;
    if (folders.IsDots()) continue;
    if (!folders.IsDirectory()) {
      out.push_back(folders.GetFileName());
      continue;
    }
    const LqWString prefix = folders.GetFileName();
    LqWString inner = folders.GetFilePath();
    inner += u"\\*.*";
    LqFileFind files;
    if (!files.FindFile(inner)) continue;
    for (bool moreFiles = true; moreFiles;) {
      moreFiles = files.FindNextFileW() != 0;
      if (files.IsDots() || files.IsDirectory()) continue;
      LqWString name = prefix;
      name += u"/";
      name += files.GetFileName();
      out.push_back(name);
    }
  }
  return true;
}
