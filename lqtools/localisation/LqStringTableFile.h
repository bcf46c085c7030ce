// LqStringTableFile: numbered user texts of one language, read from a string table file with an
// optional second file standing behind it (typically the complete base language behind a partial
// translation). Only the checksummed index is held in memory; each lookup reads its UTF-8 text
// from the open file.
//
// File format (integers big-endian, except the checksum):
//   0        2 bytes    entry count N (0 to 65535)
//   2        8N bytes   entries: id (2), absolute text position (4), text length (2)
//   2 + 8N   2 bytes    CRC-16/MODBUS of the 2 + 8N bytes ahead of it, register hi then lo
//   4 + 8N   ...        text area, UTF-8 without terminators
// Position 0xFFFFFFFF or length 0xFFFF means no text. A primary text of one blank marks a text
// not translated in that file: it is answered from the secondary file. LqStringTableWriter
// writes such files.
//
// Failures are results: a lookup that finds nothing writes "IDS_%05d" with the id and returns
// false. Every object has one lock around its index and its file handles, so any number of
// threads may look texts up while another calls SetFile; each gets a whole text or the fallback.
// Nothing here throws except std::bad_alloc.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqStringTableFile {
 public:
  // Where the text of one id stands in each file; all ones where a file has none.
  struct tagStringInfo {
    uint32_t primaryOffset = 0xFFFFFFFFu;
    uint16_t primaryLength = 0xFFFF;
    uint32_t secondaryOffset = 0xFFFFFFFFu;
    uint16_t secondaryLength = 0xFFFF;
  };

  LqStringTableFile();
  virtual ~LqStringTableFile();
  LqStringTableFile(const LqStringTableFile&) = delete;
  LqStringTableFile& operator=(const LqStringTableFile&) = delete;

  // Drops what was loaded, then loads `primary` and, when given and not the same path, `secondary`
  // (may be null). False when the primary file cannot be opened or its index checksum is wrong;
  // the table is then closed. An empty primary table (count 0) is a success that leaves the table
  // closed. A secondary file that cannot be opened or fails its checksum is ignored.
  bool SetFile(const char* primary, const char* secondary);

  // The text of `id` (cut to its low 16 bits for the search) into `text`: true when a stored text
  // was delivered, otherwise false with the fallback "IDS_%05d" of the whole id. A stored text is
  // delivered up to its first zero byte. The name is the one callers know; it is no system call.
  bool LoadStringW(LqString& text, unsigned int id) const;
  // The same, converted from UTF-8 by Utf8ToUtf16.
  bool LoadStringW(LqWString& text, unsigned int id) const;

 private:
  void Close();
  bool InvalidString(LqString& text, unsigned int id) const;
  // Kept: the wide fallback reads "IDS_05%d" (id 7 gives "IDS_057"); no lookup reaches it.
  bool InvalidString(LqWString& text, unsigned int id) const;
  bool LoadStringSecondary(LqString& text, unsigned int id, const tagStringInfo* info) const;
  // Reads `length` bytes at `offset` of `handle` into `text`, cut at a zero byte.
  static bool ReadText(int handle, uint32_t offset, uint16_t length, LqString& text);

  std::map<uint16_t, tagStringInfo> m_index;  // one record per id of either file
  std::atomic<int> m_primary{-1};             // file handles, -1 while closed
  int m_secondary = -1;
  mutable std::recursive_mutex m_lock;
};

// ------------------------------------------------------------------------------------------
// The process-wide table and the lookups on it. Until SetLqLoadStringTableFile succeeds every
// lookup yields the fallback text.

LQTOOLS_API bool SetLqLoadStringTableFile(const char* primary, const char* secondary);
LQTOOLS_API LqWString LqLoadString(unsigned int id);
LQTOOLS_API LqString& LqLoadString(unsigned int id, LqString& text);
LQTOOLS_API LqWString& LqLoadString(unsigned int id, LqWString& text);

// ------------------------------------------------------------------------------------------
// What an id looks like as a symbol: "IDS_%05d" of the id read as a signed 32-bit number (7 gives
// "IDS_00007", 0xFFFFFFFF gives "IDS_-0001"). No table is read.

LQTOOLS_API LqString& StringId2String(unsigned int id, LqString& text);
LQTOOLS_API LqWString& StringId2String(unsigned int id, LqWString& text);
// Writes into the caller's buffer with no bound: it must hold 16 bytes. Returns `buffer`.
LQTOOLS_API char* StringId2String(unsigned int id, char* buffer);
// At most `capacity` units, the terminator included; a cut text stays terminated.
LQTOOLS_API char16_t* StringId2String(unsigned int id, char16_t* buffer, int capacity);
