// LqCurrency: the currency of the process, a code and the symbol printed with amounts. The pairs
// stand in "currencies.curr" beside the host program (GetSharePath()), as UTF-8 text: a code, white
// space, a symbol, and so on; line ends are white space too, so one pair a line is custom only.
//
// LqCurrency::Get() is the selected currency of the process; further objects can be made freely.
// Nothing locks it: a Set while other threads read the instance is the caller's to serialise.
// Failures show only as IsValid() false: a missing file, an unknown code.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqCurrency {
 public:
  LqCurrency();
  explicit LqCurrency(const LqWString& code);
  LqCurrency(const LqCurrency& other);
  LqCurrency& operator=(const LqCurrency& other);
  virtual ~LqCurrency();

  static LqCurrency& Get() { return m_instance; }
  static LqCurrency m_instance;

  LqWString Code() { return m_code; }
  LqWString Symbol() { return m_symbol; }
  bool IsValid() const { return m_code.Length() > 0 && m_code[0] != 0; }
  void Reset();
  // Selects `code` from the file: the first pair whose code equals it exactly. The current code
  // returns at once, without reading the file; an empty code resets.
  void Set(const LqWString& code);

 private:
  LqWString m_code;
  LqWString m_symbol;
};
