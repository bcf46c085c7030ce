// LqStringTableWriter: builds a string table file that LqStringTableFile reads back byte for
// byte. Collect ids with their UTF-8 texts (or the blank mark for "not translated here"), then
// Save. Adding an id again replaces its text; entries are written in ascending id order and equal
// texts are stored once.
//
// What the format cannot hold is refused with a result instead of a file that reads back wrong:
// an id above 65535, a text of 65535 bytes or more, a text with a zero byte (the reader cuts
// there), more than 65535 entries, or a text area that would reach beyond the positions the reader
// can seek to (2^31 - 1). A refused Add leaves the collection as it was.
//
// A plain value for one thread at a time. Save writes a temporary file beside the target and
// renames it over the target, so a table that has the old file open keeps reading the old texts.
#pragma once

#include <map>
#include <string>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqStringTableWriter {
 public:
  enum Result {
    Ok = 0,
    IdOutOfRange,     // id above 65535
    TextTooLong,      // 65535 bytes or more
    TextHasZeroByte,  // the reader would cut the text there
    TooManyEntries,   // a 65536th id
    FileTooLarge,     // a text would start at or beyond 2^31 - 1
    CannotWrite       // the file could not be created, written or renamed
  };

  // Adds or replaces the text of `id`: `length` bytes of `text`, or up to its zero byte when
  // `length` is negative.
  Result Add(unsigned int id, const char* text, int length = -1);
  Result Add(unsigned int id, const LqString& text);
  // Stored as UTF-8 (Utf16ToUtf8).
  Result Add(unsigned int id, const LqWString& text);
  // The blank mark: in a primary file the reader answers this id from the secondary file. A text
  // of exactly one blank is that same mark.
  Result AddUntranslated(unsigned int id);

  bool Remove(unsigned int id);
  void Clear() { m_texts.clear(); }
  int Count() const { return static_cast<int>(m_texts.size()); }

  // The whole file image. Fails only with FileTooLarge, leaving `bytes` empty.
  Result Build(std::string& bytes) const;
  // Build, then write to `path` through a temporary file and a rename.
  Result Save(const char* path) const;

  // A short English text for a result, for messages of tools ("id above 65535", ...).
  static const char* ResultText(Result result);

 private:
  std::map<uint16_t, std::string> m_texts;
};
