// LqTimeZone: the offset from UTC of a named zone at a given date-time, and whether daylight
// saving is in force then, from a compiled zone file (TZif) in the folder `zoneinfo/` beside the
// host program. Only the file's first, 32-bit data block is read: its transition times, and for
// each the offset and daylight flag of its local time type.
//
// Two process-wide instances: Get(), the zone of every plain local/UTC conversion (set by the host
// with Get().Set(name); empty until then), and GetAnother(), the working zone that the explicit
// conversions point at whatever zone they are asked for. Nothing locks them: Set must not run
// while another thread reads the same instance.
//
// A name that cannot be loaded leaves the zone empty (IsValid() false); nothing is reported. A
// loaded zone lives in memory and a lookup reads no file. Copies own copies of the tables.
#pragma once

#include <cstdint>
#include <vector>

#include "lqtools/LqToolsExport.h"
#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqTimeZone {
 public:
  LqTimeZone();
  // An empty name leaves the zone empty.
  explicit LqTimeZone(const LqWString& name);
  LqTimeZone(const LqTimeZone& other);
  LqTimeZone& operator=(const LqTimeZone& other);
  virtual ~LqTimeZone();

  static LqTimeZone& Get() { return m_instance; }
  static LqTimeZone& GetAnother() { return m_alt_instance; }
  static LqTimeZone m_instance;
  static LqTimeZone m_alt_instance;

  // Loads the zone file `name` below GetTimeZonePath(). The name of the loaded zone returns at
  // once, without touching the file; any other name empties the zone first.
  void Set(const LqWString& name);
  void Reset();
  LqWString Name() const { return m_name; }
  // A zone file without transitions is valid (and gives offset 0 all year).
  bool IsValid() const { return m_count != -1; }

  // Seconds east of UTC at `date`, read as UTC or as a local reading of this zone. Mode 0 takes
  // the transition in force; mode 1 gives the daylight offset for the whole standard-time stretch
  // after a change back, mode 2 the standard offset for the whole daylight stretch after a change
  // forward (only for local readings; any other mode acts as 0).
  int Offset(const LqDateTime& date, bool dateIsUtc, int mode);
  // Whether the transition in force at `date` (UTC) starts daylight saving time.
  bool Dst(const LqDateTime& date);

  // The zone names that the zone folder holds, two levels deep, appended to `out` in the order of
  // enumeration. False when the folder cannot be listed.
  static bool GetSupportedOlsonTimeZones(std::vector<LqWString>& out);

 private:
  int CalculateOffsetWindows(const LqDateTime& date, bool dateIsUtc, int mode);
  // The index of the transition in force for Unix seconds `e`.
  int32_t TransitionInForce(int32_t e, bool dateIsUtc) const;
  void Release();
  void CopyTables(const LqTimeZone& other);

  LqWString m_name;
  int32_t* m_transitions = nullptr;
  int32_t* m_offsets = nullptr;
  unsigned char* m_isDst = nullptr;
  int32_t m_count = -1;
  // Whether a binary search finds what the documented walk from the start finds: set at load
  // for tables in the order the search needs.
  bool m_utcOrdered = false;
  bool m_localOrdered = false;
};

// GetAppPath() followed by "zoneinfo/".
LQTOOLS_API LqWString GetTimeZonePath();
